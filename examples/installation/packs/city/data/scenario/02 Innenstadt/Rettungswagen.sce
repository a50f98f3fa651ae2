<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Rettungswagen</name>
    <description>Blaulicht von hinten: rechts ran, Platz machen.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="70"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="16"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="emergency vehicle"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="291.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="19.5"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Hauptstraße"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="1500"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1500"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Schüler"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="12.5"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="200"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="200"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="9"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Rettungswagen"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="ambulance"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="22.222222222"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="2"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="6.5"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="4200"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Schüler"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Rettung 1"/>
      <label ScenarioTreeValue="RTW"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="hasty"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Sound>
      <name type="string" verboseName="Sound" ScenarioTreeValue="siren"/>
    </Sound>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Rettungswagen"
	FILE="innenstadt/rettungswagen.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Gebremst nach"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF RULE (1)
	{
		LABEL="Collision"
		EVALUATION="ERROR"

		TYPEOF CONDITION (HAS_VHL_COLLIDED)
		{
			MODIFIER="BECOMES_TRUE"

			TYPEOF PARAMETER (VHL_NUMBER)
			{
				KIND="VEHICLE"
				VALUE="0"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (PLAY_SOUND)
		{

			TYPEOF PARAMETER (SOUND_NAME)
			{
				KIND="FILE"
				VALUE="crash.wav"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VOLUME)
			{
				KIND="USER"
				VALUE="1"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (LOG_MESSAGE)
		{

			TYPEOF PARAMETER (MESSAGE)
			{
				KIND="USER"
				VALUE="Collision"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (SEVERITY)
			{
				KIND="ENUM"
				VALUE="ERROR"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (STOP_SCENARIO)
		{
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Nichtsahnend"
		TASK_KIND="0"

		TYPEOF RULE (2)
		{
			LABEL="Unterwegs"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VHL_LIGHT)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="9"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT)
				{
					KIND="ENUM"
					VALUE="LIGHT_BLUE"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_SPEED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="9"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="22.222"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (3)
		{
			LABEL="Sirene"

			TYPEOF CONDITION (IS_VHL_CLOSER)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (OTHER_VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="9"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISTANCE)
				{
					KIND="USER"
					VALUE="120"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (PLAY_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="SOUND"
					VALUE="siren"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VOLUME)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="2"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (2)
	{
		LABEL="Platz machen"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Rechts"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VHL_INDICATOR)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SIDE)
				{
					KIND="ENUM"
					VALUE="SIDE_RIGHT"
					OWNER_FILE=""
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
					VALUE="5.556"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="-2"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (5)
		{
			LABEL="Bremst"

			TYPEOF CONDITION (IS_VHL_BRAKING)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="innenstadt/rettungswagen.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_STATE_TIME)
					{
					}
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="Vorbei"

			TYPEOF CONDITION (IS_VHL_BEHIND)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (OTHER_VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="9"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (STOP_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="SOUND"
					VALUE="siren"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="3"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (3)
	{
		LABEL="Weiter"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="Blinker aus"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VHL_INDICATOR)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SIDE)
				{
					KIND="ENUM"
					VALUE="SIDE_NONE"
					OWNER_FILE=""
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
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (8)
		{
			LABEL="Exercise ends"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (STOP_SCENARIO)
			{
			}
		}
	}
}
</text>
    </ScenarioScript>
  </Scenario>
</sce>
