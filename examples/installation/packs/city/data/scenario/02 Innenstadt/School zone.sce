<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>School zone</name>
    <description>Half past seven, thirty, and every gap between the cars may hold a child.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="100"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="20"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="children"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="279.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="7.5"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="School Lane"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="650"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="8.333333333"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="1"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="650"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="8.333333333"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="60"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="30"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="12.5"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
      <ScenarioScript>
        <scriptName>pedals</scriptName>
        <scriptType>nuro</scriptType>
        <text>
TYPEOF SCENARIO (1)
{
	LABEL="Pedals"
	FILE="innenstadt/pedals.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (7)
	{
		LABEL="Brake pedal"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="1"
		INTERACTIVE_STEP_VALUE="0.01"
		CATEGORY="CABIN"
	}

	TYPEOF VARIABLE (8)
	{
		LABEL="Pedal noise"
		TYPE="BOOL"
		VALUE="1"
		INTERACTIVE_TYPE="BOOL"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="CABIN"
	}
}
</text>
      </ScenarioScript>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Object>
      <name type="string" ScenarioTreeValue="child"/>
      <x type="real" unit="m" ScenarioTreeValue="330"/>
      <y type="real" unit="m" ScenarioTreeValue="4"/>
    </Object>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="child"/>
    </Trigger>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="School zone"
	FILE="innenstadt/school_zone.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="speed_monitor.sc"
	}

	TYPEOF INCLUDE (2)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="school/Fußgänger.sc"
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

	TYPEOF RULE (2)
	{
		LABEL="Pause until the student is ready"
		IS_DISABLED="1"

		TYPEOF CONDITION (IS_KEY_PRESSED)
		{
			MODIFIER="HAS_BEEN_FALSE"

			TYPEOF PARAMETER (KEY)
			{
				KIND="ENUM"
				VALUE="KEY_START"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (PAUSE_SCENARIO)
		{
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Too fast"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Start"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_SPEED_LIMIT)
			{

				TYPEOF PARAMETER (SPEED)
				{
					KIND="ENUM"
					VALUE="SPEED_ZONE_30"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Sign"

			TYPEOF CONDITION (HAS_PASSED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISTANCE)
				{
					KIND="USER"
					VALUE="60"
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
					KIND="ENUM"
					VALUE="SPEED_ZONE_30"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="-2"
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
		LABEL="Thirty"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Child"

			TYPEOF CONDITION (CHANCE)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (PROBABILITY)
				{
					KIND="USER"
					VALUE="3"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (FIRE_TRIGGER)
			{

				TYPEOF PARAMETER (TRIGGER_NAME)
				{
					KIND="TRIGGER"
					VALUE="child"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (BRAKE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DECELERATION)
				{
					KIND="USER"
					VALUE="7"
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

		TYPEOF RULE (6)
		{
			LABEL="No child today"

			TYPEOF CONDITION (HAS_PASSED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISTANCE)
				{
					KIND="USER"
					VALUE="500"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="4"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (3)
	{
		LABEL="Child on the road"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="Stands"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{
				MODIFIER="HAS_BEEN_TRUE_FOR"
				DURATION="3.000000"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
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
					KIND="ENUM"
					VALUE="SPEED_WALK"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
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
					VALUE="4"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (4)
	{
		LABEL="End"
		TASK_KIND="0"

		TYPEOF RULE (8)
		{
			LABEL="Exercise ends"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="4"
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
