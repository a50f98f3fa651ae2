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
      <parameterId>/sce/Scenario/speed</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>3</default>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
