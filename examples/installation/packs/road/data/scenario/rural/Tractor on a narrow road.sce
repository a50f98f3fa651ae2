<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Tractor on a narrow road</name>
    <description>A farm tractor turns off without indicating.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="120"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="3"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.5 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="rural patience"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="8000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="284.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="4"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="K 7"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="2600"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="2600"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="-0.015"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="19.444444444"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.5"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Tractor"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="tractor_farm"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="6.944444444"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="160"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="160"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.5"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="5.4"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="6200"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Old Jakob"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.4"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Tractor"
	FILE="rural/tractor.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="speed_monitor.sc"
	}

	TYPEOF VARIABLE (1)
	{
		LABEL="Patience in seconds"
		TYPE="FLOAT"
		VALUE="30"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="5"
		INTERACTIVE_MAX_VALUE="120"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="TRAFFIC"
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
		LABEL="Behind the tractor"
		TASK_KIND="0"

		TYPEOF RULE (2)
		{
			LABEL="Catch up"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_SPEED_LIMIT)
			{

				TYPEOF PARAMETER (SPEED)
				{
					KIND="ENUM"
					VALUE="SPEED_RURAL"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (FOLLOW_VHL)
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
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (HEADWAY)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (3)
		{
			LABEL="Close behind"

			TYPEOF CONDITION (IS_VHL_CLOSER)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (OTHER_VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISTANCE)
				{
					KIND="USER"
					VALUE="60"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (START_TIMER)
			{

				TYPEOF PARAMETER (TIMER_NUMBER)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Patience is over"

			TYPEOF CONDITION (SUPEQUAL)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_TIMER)
					{

						TYPEOF PARAMETER (TIMER_NUMBER)
						{
							KIND="USER"
							VALUE="1"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="rural/tractor.sc"
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
		LABEL="Tractor turns off"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Brakes without a sign"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (BRAKE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DECELERATION)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="The tractor turns off"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SEVERITY)
				{
					KIND="ENUM"
					VALUE="WARNING"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="Tractor is gone"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (REMOVE_VHL)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
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
		LABEL="Free road"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="On"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
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
					VALUE="SPEED_RURAL"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="1.2"
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
					VALUE="10"
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
    <VariadicParameter>
      <name>Tractor speed</name>
      <description>In steps of the gearbox</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=1]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>25</default>
        <RealRange>
          <minimum>15</minimum>
          <maximum>40</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
