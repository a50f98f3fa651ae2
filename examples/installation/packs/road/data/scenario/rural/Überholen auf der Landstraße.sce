<?xml version="1.0" encoding="UTF-8"?>
<!-- The truck's speed and the van are what an instructor usually varies. -->
<sce version="1">
  <Scenario>
    <name>Überholen auf der Landstraße</name>
    <description>Zwei Fahrstreifen, ein langsamer Lastwagen, Gegenverkehr. Überholen, wenn die Lücke reicht; sonst dahinter bleiben.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="180"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="7"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="rural overtaking oncoming"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="°C" verboseName="Air temperature" ScenarioTreeValue="294.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="L 312"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="5200"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777778"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="3100"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777778"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="3100"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="5200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="19.444444"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0.035"/>
      </Stretch>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="3100"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="70"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_estate"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="23.611111"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.7"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1480"/>
      <automaticGearbox type="boolean" verboseName="Automatic gearbox" ScenarioTreeValue="true"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="3"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Truck"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="truck_18t"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="16.666667"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="120"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="120"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="10.2"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="14500"/>
      <indicatorsWork type="boolean" verboseName="Indicators work" ScenarioTreeValue="true"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="4"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Oncoming van"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="van_delivery"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="26.388889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="900"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="-1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="900"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="-1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="3.141593"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="6.1"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="2300"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Anna Křížová"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.95"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Bernd"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.8"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Chloé"/>
      <label ScenarioTreeValue="V1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="hasty"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.6"/>
    </Driver>
    <VariadicParameter>
      <name>Truck speed</name>
      <description>How fast the truck drives.</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>60</default>
        <RealRange>
          <minimum>50</minimum>
          <maximum>70</maximum>
        </RealRange>
        <RealRange>
          <minimum>75</minimum>
          <maximum>90</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Lane of the van</name>
      <description>−1 is the oncoming lane.</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=4]/lane</parameterId>
      <parameterUnit></parameterUnit>
      <IntegerParameter>
        <default>-1</default>
        <IntegerRange>
          <minimum>-1</minimum>
          <maximum>-1</maximum>
        </IntegerRange>
        <IntegerRange>
          <minimum>1</minimum>
          <maximum>2</maximum>
        </IntegerRange>
      </IntegerParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Fog</name>
      <description>Fog on the road</description>
      <parameterId>/sce/Scenario/Weather/fog</parameterId>
      <parameterUnit></parameterUnit>
      <BooleanParameter>
        <default>false</default>
      </BooleanParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Surface</name>
      <description>Surface of the first stretch</description>
      <parameterId>/sce/Scenario/Road/Stretch/surface</parameterId>
      <parameterUnit></parameterUnit>
      <LiteralParameter>
        <default>asphalt</default>
        <LiteralRange>
          <literal>asphalt</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>concrete</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>cobbles</literal>
        </LiteralRange>
      </LiteralParameter>
    </VariadicParameter>
  </Scenario>
</sce>
