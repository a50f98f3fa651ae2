<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Fahrprüfung Klasse B</name>
    <description>Abfahrtkontrolle, Stadtfahrt, Einparken. Wer hundert Punkte behält, hat bestanden.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="600"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="test"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="1"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="test marks"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="9000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="°C" verboseName="Air temperature" ScenarioTreeValue="288.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Prüfstrecke"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="3400"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="1200"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1600"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="8.333333"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="1600"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="3400"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="800"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="red"/>
      </TrafficLight>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="1"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="2100"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="green"/>
      </TrafficLight>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="1200"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="30"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Prüfling"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
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
      <Input>
        <name type="string" ScenarioTreeValue="steering"/>
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
      <name ScenarioTreeValue="Bus"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="bus_city"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="8.888889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="150"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="150"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="12"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="13500"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Fahrrad"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="bicycle"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="4.166667"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="1300"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="1300"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="1.8"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="90"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Прохор"/>
      <label ScenarioTreeValue="P1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Busfahrerin"/>
      <label ScenarioTreeValue="B1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Kind"/>
      <label ScenarioTreeValue="K1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="reckless"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.2"/>
    </Driver>
    <Image>
      <name type="string" verboseName="Image" ScenarioTreeValue="examiner"/>
    </Image>
    <Sound>
      <name type="string" verboseName="Sound" ScenarioTreeValue="gong"/>
    </Sound>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="start"/>
    </Trigger>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="child"/>
    </Trigger>
    <Object>
      <name type="string" ScenarioTreeValue="ball"/>
      <x type="real" unit="m" ScenarioTreeValue="1320"/>
      <y type="real" unit="m" ScenarioTreeValue="3"/>
    </Object>
    <VariadicParameter>
      <name>Duration</name>
      <description>Length of the test</description>
      <parameterId>/sce/Scenario/duration</parameterId>
      <parameterUnit>s</parameterUnit>
      <RealParameter>
        <default>600</default>
        <RealRange>
          <minimum>300</minimum>
          <maximum>1800</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Bus</name>
      <description>Speed of the bus</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=1]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>32</default>
        <RealRange>
          <minimum>20</minimum>
          <maximum>50</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
