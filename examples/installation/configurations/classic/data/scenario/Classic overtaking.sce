<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Classic overtaking</name>
    <description>The overtaking exercise as it was in version 2.8.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="120"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="7"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="classic"/>
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
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="B 12"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="4000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777777778"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="22.222222222"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Truck"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="truck_18t"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="16.666666667"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="100"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="100"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="10.2"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="14500"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Trucker"/>
      <label ScenarioTreeValue="T1"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Classic overtaking"
	FILE="classic/overtaking.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="alt/pause.sc"
	}

	TYPEOF VARIABLE (1)
	{
		LABEL="Truck speed"
		TYPE="FLOAT"
		VALUE="16.7"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="10"
		INTERACTIVE_MAX_VALUE="25"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="TRAFFIC"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Overtakings"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF TASK (1)
	{
		LABEL="Follow"
		TASK_KIND="0"

		TYPEOF RULE (1)
		{
			LABEL="Truck"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VHL_TARGET_SPEED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="classic/overtaking.sc"
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (2)
		{
			LABEL="Close"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_DISTANCE_BETWEEN)
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
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="30"
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
		LABEL="Overtake"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Faster"

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
					KIND="USER"
					VALUE="27.778"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DISPLAY_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Overtake now"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISPLAY_TIME)
				{
					KIND="USER"
					VALUE="4"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Ahead"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_DISTANCE_BETWEEN)
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
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="-30"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (ADD_TO_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="classic/overtaking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
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
					VALUE="3"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (3)
	{
		LABEL="Done"
		TASK_KIND="0"

		TYPEOF RULE (5)
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
    <VariadicParameter>
      <name>Truck speed</name>
      <description>Speed of the truck</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=1]/value</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>16.7</default>
        <RealRange>
          <minimum>14</minimum>
          <maximum>22</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
