<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Every word</name>
    <description>Uses each kind of value and each modifier at least once; for those who write scripts.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="30"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="none"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="1"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="workshop"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="°C" verboseName="Air temperature" ScenarioTreeValue="291.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Test track"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="1000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="100"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="red"/>
      </TrafficLight>
      <Barrier>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="200"/>
        <closed type="boolean" verboseName="Closed" ScenarioTreeValue="false"/>
      </Barrier>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="300"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="50"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="10"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
      <Input>
        <name type="string" ScenarioTreeValue="throttle"/>
      </Input>
      <Input>
        <name type="string" ScenarioTreeValue="brake"/>
      </Input>
      <Output>
        <name type="string" ScenarioTreeValue="speed"/>
      </Output>
      <Output>
        <name type="string" ScenarioTreeValue="engineSpeed"/>
      </Output>
      <Output>
        <name type="string" ScenarioTreeValue="fuel"/>
      </Output>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Other car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="8.333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="80"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="80"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Tester"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Second tester"/>
      <label ScenarioTreeValue="T2"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="alarm"/>
    </Trigger>
    <Image>
      <name type="string" verboseName="Image" ScenarioTreeValue="plan"/>
    </Image>
    <Sound>
      <name type="string" verboseName="Sound" ScenarioTreeValue="beep"/>
    </Sound>
    <Object>
      <name type="string" ScenarioTreeValue="gate"/>
      <x type="real" unit="m" ScenarioTreeValue="250"/>
      <y type="real" unit="m" ScenarioTreeValue="0"/>
    </Object>
  </Scenario>
</sce>
