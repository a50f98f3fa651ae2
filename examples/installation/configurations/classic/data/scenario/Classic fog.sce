<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Classic fog</name>
    <description>Fog in one step.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="60"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="3"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="classic fog"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="fog"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="true"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="100"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="291.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="27.777777778"/>
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
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Classic fog"
	FILE=""
	TASK_KIND="0"

	TYPEOF RULE (1)
	{
		LABEL="Fog"

		TYPEOF CONDITION (ALWAYS)
		{
			MODIFIER="BECOMES_TRUE"
		}

		TYPEOF ACTION (SET_WEATHER)
		{

			TYPEOF PARAMETER (WEATHER)
			{
				KIND="ENUM"
				VALUE="WEATHER_FOG"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_VISIBILITY)
		{

			TYPEOF PARAMETER (VISIBILITY)
			{
				KIND="USER"
				VALUE="80"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (CHANGE_TIME)
			{
				KIND="USER"
				VALUE="0"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (2)
	{
		LABEL="Too fast for the fog"

		TYPEOF CONDITION (AND)
		{
			MODIFIER="BECOMES_TRUE"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VISIBILITY)
					{
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="100"
					OWNER_FILE=""
				}
			}

			TYPEOF CONDITION (IS_VHL_FASTER)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="13.889"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF ACTION (SET_VHL_TARGET_SPEED)
		{

			TYPEOF PARAMETER (VHL_NUMBER)
			{
				KIND="VEHICLE"
				VALUE="0"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (SPEED)
			{
				KIND="USER"
				VALUE="12.5"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (ACCELERATION)
			{
				KIND="USER"
				VALUE="-2"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (PLAY_SOUND)
		{

			TYPEOF PARAMETER (SOUND_NAME)
			{
				KIND="FILE"
				VALUE="chime.wav"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VOLUME)
			{
				KIND="USER"
				VALUE="0.5"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (3)
	{
		LABEL="End"

		TYPEOF CONDITION (IS_TIME_AFTER)
		{

			TYPEOF PARAMETER (SCENARIO_TIME)
			{
				KIND="USER"
				VALUE="40"
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
