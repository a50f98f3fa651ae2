<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Proving ground</name>
    <description>An empty circle of three hundred metres across.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="600"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="none"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="0"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="empty"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="291.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <ProvingGround>
      <radius type="real" unit="m" verboseName="Radius" ScenarioTreeValue="150"/>
      <banking type="real" unit="deg" verboseName="Banking" ScenarioTreeValue="0.13962634"/>
      <gates type="integer" verboseName="Gates" ScenarioTreeValue="12"/>
    </ProvingGround>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
      <idleEngineSpeed type="real" unit="rpm" verboseName="Idle engine speed" ScenarioTreeValue="94.247779608"/>
      <power type="real" unit="kW" verboseName="Power" ScenarioTreeValue="81000"/>
      <torque type="real" unit="N.m" verboseName="Torque" ScenarioTreeValue="205"/>
      <tank type="real" unit="L" verboseName="Tank" ScenarioTreeValue="0.045"/>
      <tyrePressure type="real" unit="bar" verboseName="Tyre pressure" ScenarioTreeValue="230000"/>
      <battery type="real" unit="V" verboseName="Battery" ScenarioTreeValue="12.6"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Tester"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
  </Scenario>
</sce>
