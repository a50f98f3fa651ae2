<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Example</name>
    <speed type="real" unit="m/s" ScenarioTreeValue="10"/>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <name ScenarioTreeValue="Car"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Dora"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Example"
	FILE="example.sc"
	TASK_KIND="0"
	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="../../../../elsewhere.sc"
	}
}
</text>
    </ScenarioScript>
  </Scenario>
</sce>
