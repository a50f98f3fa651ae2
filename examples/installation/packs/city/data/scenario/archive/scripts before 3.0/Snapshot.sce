<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Snapshot</name>
    <description>Without a suffix.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="20"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="none"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="105"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="archive"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="13.888888889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Second car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="11.111111111"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="50"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="50"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Tester"/>
      <label ScenarioTreeValue="T1"/>
    </Driver>
    <Image>
      <name type="string" verboseName="Image" ScenarioTreeValue="plan"/>
    </Image>
    <ScenarioScript>
      <scriptName>old</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Snapshot"
	FILE=""
	TASK_KIND="0"

	TYPEOF RULE (1)
	{
		LABEL="Picture"

		TYPEOF CONDITION (IS_TIME_AFTER)
		{
			MODIFIER="BECOMES_TRUE"

			TYPEOF PARAMETER (SCENARIO_TIME)
			{
				KIND="USER"
				VALUE="3"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SNAPSHOT)
		{

			TYPEOF PARAMETER (CHANNEL_NAME)
			{
				KIND="ENUM"
				VALUE="CHANNEL_MIRROR"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (2)
	{
		LABEL="End"

		TYPEOF CONDITION (IS_TIME_AFTER)
		{

			TYPEOF PARAMETER (SCENARIO_TIME)
			{
				KIND="USER"
				VALUE="20"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (STOP_SCENARIO)
		{
		}
	}
}
</text>
    </ScenarioScript>
  </Scenario>
</sce>
