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
    <VariadicParameter>
      <name>Example</name>
      <description></description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=1]/value</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>50</default>
        <RealRange>
          <minimum>0</minimum>
          <maximum>500</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Example"
	FILE="example.sc"
	TASK_KIND="0"
	TYPEOF VARIABLE (1)
	{
		LABEL="Speed"
		TYPE="FLOAT"
		VALUE="1"
		INTERACTIVE_TYPE="FLOAT"
		INTERACTIVE_MAX_VALUE="130"
	}
}
</text>
    </ScenarioScript>
  </Scenario>
</sce>
