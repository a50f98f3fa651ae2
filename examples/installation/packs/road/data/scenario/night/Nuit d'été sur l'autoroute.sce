<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Nuit d'été sur l'autoroute</name>
    <description>Trois heures de conduite monotone; l'attention baisse. Une biche traverse.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="240"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="29"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="night tiredness"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="°C" verboseName="Air temperature" ScenarioTreeValue="292.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="23.5"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="A 6"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="30000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="3"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="30000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Élève"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_estate"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="34.722222"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="7"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Biche"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="deer"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="2900"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="3"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="2900"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="1.6"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="80"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Hélène"/>
      <label ScenarioTreeValue="É1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.7"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Biche"/>
      <label ScenarioTreeValue="B"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="reckless"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0"/>
    </Driver>
    <Object>
      <name type="string" ScenarioTreeValue="barrière"/>
      <x type="real" unit="m" ScenarioTreeValue="2890"/>
      <y type="real" unit="m" ScenarioTreeValue="12"/>
    </Object>
    <VariadicParameter>
      <name>Heure</name>
      <description>Heure du jour</description>
      <parameterId>/sce/Scenario/Weather/hour</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>23.5</default>
        <RealRange>
          <minimum>21</minimum>
          <maximum>24</maximum>
        </RealRange>
        <RealRange>
          <minimum>0</minimum>
          <maximum>5</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Graine</name>
      <description>Suite des nombres aléatoires</description>
      <parameterId>/sce/Scenario/randomSeed</parameterId>
      <parameterUnit></parameterUnit>
      <IntegerParameter>
        <default>29</default>
        <IntegerRange>
          <minimum>0</minimum>
          <maximum>1000</maximum>
        </IntegerRange>
      </IntegerParameter>
    </VariadicParameter>
  </Scenario>
</sce>
