<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Motion sickness check</name>
    <description>A slow slalom; ends at the first complaint.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="180"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="0"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="slalom"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Slalom>
      <cones type="integer" verboseName="Cones" ScenarioTreeValue="9"/>
      <spacing type="real" unit="m" verboseName="Spacing" ScenarioTreeValue="18"/>
      <Offsets>
        <cone0 type="real" unit="m" ScenarioTreeValue="0.25"/>
        <cone1 type="real" unit="m" ScenarioTreeValue="-0.25"/>
        <cone2 type="real" unit="m" ScenarioTreeValue="0.25"/>
        <cone3 type="real" unit="m" ScenarioTreeValue="-0.25"/>
        <cone4 type="real" unit="m" ScenarioTreeValue="0.25"/>
        <cone5 type="real" unit="m" ScenarioTreeValue="-0.25"/>
        <cone6 type="real" unit="m" ScenarioTreeValue="0.25"/>
        <cone7 type="real" unit="m" ScenarioTreeValue="-0.25"/>
        <cone8 type="real" unit="m" ScenarioTreeValue="0.25"/>
      </Offsets>
    </Slalom>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="5.555555556"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
  </Scenario>
</sce>
