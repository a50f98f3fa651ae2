<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Тихая дорога</name>
    <description>Пустая дорога для первой поездки.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="400"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="0"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="empty road"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="278.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Р-21"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="8000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="25"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="8000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="25"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Ученик"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="16.666666667"/>
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
      <name ScenarioTreeValue="Ученик"/>
      <label ScenarioTreeValue="У1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
  </Scenario>
</sce>
