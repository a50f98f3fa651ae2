<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>First minutes</name>
    <description>Getting used to the cabin: seat, mirrors, pedals.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="300"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="0"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="first"/>
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
    <Cabin>
      <seatHeight type="real" unit="cm" verboseName="Seat height" ScenarioTreeValue="0.32"/>
      <seatAngle type="real" unit="deg" verboseName="Seat angle" ScenarioTreeValue="0.366519143"/>
      <mirrorsHeated type="boolean" verboseName="Mirrors heated" ScenarioTreeValue="true"/>
      <display type="string" verboseName="Display" ScenarioTreeValue="Extra_0"/>
      <language type="enumeration" verboseName="Language" ScenarioTreeValue="en"/>
    </Cabin>
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
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <VariadicParameter>
      <name>Seat</name>
      <description>Height of the seat</description>
      <parameterId>/sce/Scenario/Cabin/seatHeight</parameterId>
      <parameterUnit>cm</parameterUnit>
      <RealParameter>
        <default>32</default>
        <RealRange>
          <minimum>25</minimum>
          <maximum>40</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Mirrors</name>
      <description>Heated mirrors</description>
      <parameterId>/sce/Scenario/Cabin/mirrorsHeated</parameterId>
      <parameterUnit></parameterUnit>
      <BooleanParameter>
        <default>true</default>
      </BooleanParameter>
    </VariadicParameter>
  </Scenario>
</sce>
