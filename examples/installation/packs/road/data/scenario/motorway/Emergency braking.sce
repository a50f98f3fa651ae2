<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Emergency braking</name>
    <description>The car ahead brakes hard at a moment drawn by lot. The reaction time is measured.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="60"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="42"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="motorway braking reaction"/>
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
      <name type="string" verboseName="Road" ScenarioTreeValue="A 8"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="9000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="3"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="9000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_estate"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="33.333333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.7"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1480"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Car ahead"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="33.333333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="65"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="65"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Car behind"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="33.333333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="-70"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="-70"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.95"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Dora"/>
      <label ScenarioTreeValue="A1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="reckless"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.3"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Emil"/>
      <label ScenarioTreeValue="B1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Emergency braking"
	FILE="motorway/emergency_braking.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="safety/headway_monitor.sc"
	}

	TYPEOF VARIABLE (1)
	{
		LABEL="Moment of braking"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Deceleration"
		TYPE="FLOAT"
		VALUE="8"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="2"
		INTERACTIVE_MAX_VALUE="10"
		INTERACTIVE_STEP_VALUE="0.5"
		CATEGORY="TRAFFIC"
	}

	TYPEOF VARIABLE (3)
	{
		LABEL="Reaction time"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (4)
	{
		LABEL="Sound the horn"
		TYPE="BOOL"
		VALUE="0"
		INTERACTIVE_TYPE="BOOL"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (5)
	{
		LABEL="Language"
		TYPE="STRING"
		VALUE="en"
		INTERACTIVE_TYPE="STRING"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (6)
	{
		LABEL="Repetitions"
		TYPE="INTEGER"
		VALUE="1"
		INTERACTIVE_TYPE="INTEGER"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1"
		INTERACTIVE_MAX_VALUE="5"
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
		LABEL="Following"
		TASK_KIND="0"

		TYPEOF RULE (2)
		{
			LABEL="Draw the moment"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_RANDOM_SEED)
			{

				TYPEOF PARAMETER (SEED)
				{
					KIND="USER"
					VALUE="42"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DRAW_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="motorway/emergency_braking.sc"
				}

				TYPEOF PARAMETER (LOW_VALUE)
				{
					KIND="USER"
					VALUE="8"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (HIGH_VALUE)
				{
					KIND="USER"
					VALUE="20"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_SPEED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="33.333"
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
					VALUE="1.6"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (FOLLOW_VHL)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (OTHER_VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
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
			LABEL="Now"

			TYPEOF CONDITION (SUPEQUAL)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_STATE_TIME)
					{
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="motorway/emergency_braking.sc"
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
		LABEL="Car ahead brakes"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Full braking"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (RESET_TIMER)
			{

				TYPEOF PARAMETER (TIMER_NUMBER)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (START_TIMER)
			{

				TYPEOF PARAMETER (TIMER_NUMBER)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
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
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="motorway/emergency_braking.sc"
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
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_SPEED)
					{

						TYPEOF PARAMETER (VHL_NUMBER)
						{
							KIND="VEHICLE"
							VALUE="0"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_LIGHT)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT)
				{
					KIND="ENUM"
					VALUE="LIGHT_BRAKE"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Car ahead brakes"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SEVERITY)
				{
					KIND="ENUM"
					VALUE="INFORMATION"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (5)
		{
			LABEL="Horn"

			TYPEOF CONDITION (IS_VARIABLE_TRUE)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="4"
					OWNER_FILE="motorway/emergency_braking.sc"
				}
			}

			TYPEOF ACTION (PLAY_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="FILE"
					VALUE="horn.wav"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VOLUME)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="The demonstration reacts after a second"

			TYPEOF CONDITION (IS_TIMER_ELAPSED)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (TIMER_NUMBER)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="1"
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
					VALUE="8"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (BRAKE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DECELERATION)
				{
					KIND="USER"
					VALUE="7"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (7)
		{
			LABEL="Reaction"

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
					VALUE="3"
					OWNER_FILE="motorway/emergency_braking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_TIMER)
					{

						TYPEOF PARAMETER (TIMER_NUMBER)
						{
							KIND="USER"
							VALUE="2"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DISPLAY_VALUE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Reaction time"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE="motorway/emergency_braking.sc"
				}
			}
		}

		TYPEOF RULE (8)
		{
			LABEL="All stand"

			TYPEOF CONDITION (AND)
			{

				TYPEOF CONDITION (IS_VHL_STOPPED)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (IS_VHL_STOPPED)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="1"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (IS_VHL_BRAKING)
				{
					MODIFIER="HAS_BEEN_TRUE"

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}
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
		LABEL="Result"
		TASK_KIND="0"

		TYPEOF RULE (9)
		{
			LABEL="Fast reaction"

			TYPEOF CONDITION (INFEQUAL)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE="motorway/emergency_braking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="1.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DISPLAY_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Quick"
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

		TYPEOF RULE (10)
		{
			LABEL="Slow reaction"

			TYPEOF CONDITION (SUPERIOR)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE="motorway/emergency_braking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="1.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DISPLAY_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Slow"
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

		TYPEOF RULE (11)
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

	TYPEOF EVALUATION (1)
	{
		LABEL="Marks"
		TASK_KIND="0"
		SCORE="0 100.000000"
		SCORE="1 0.000000"

		TYPEOF CRITERIA (1)
		{
			LABEL="Headway"
			TASK_KIND="0"
			CATEGORY="Distance"
			CRITICITY="3"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT="Too close"
			SOUND="warning.wav"

			TYPEOF RULE (12)
			{
				LABEL="Less than half a second"
				EVALUATION="WARNING"

				TYPEOF CONDITION (EVALUATION_HEADWAY_BELOW)
				{
					MODIFIER="HAS_BEEN_TRUE_FOR"
					DURATION="1.000000"

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
						VALUE="0.5"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_REMARK)
				{

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Too close"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF CRITERIA (2)
		{
			LABEL="Collision"
			TASK_KIND="0"
			CATEGORY="Safety"
			CRITICITY="5"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT=""
			SOUND=""

			TYPEOF RULE (13)
			{
				LABEL="Touched"
				EVALUATION="ERROR"

				TYPEOF CONDITION (EVALUATION_COLLISION)
				{
					MODIFIER="BECOMES_TRUE"

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_ERROR)
				{

					TYPEOF PARAMETER (LEVEL)
					{
						KIND="ENUM"
						VALUE="LEVEL_FAILED"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Collision"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_POINTS)
				{

					TYPEOF PARAMETER (SCORE_NUMBER)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (POINTS)
					{
						KIND="USER"
						VALUE="-100"
						OWNER_FILE=""
					}
				}
			}
		}
	}

	TYPEOF GENERAL_PARAMETERS (0)
	{
	}
}
</text>
    </ScenarioScript>
    <VariadicParameter>
      <name>Gap</name>
      <description>Distance to the car ahead</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=1]/roadPosition</parameterId>
      <parameterUnit>m</parameterUnit>
      <RealParameter>
        <default>65</default>
        <RealRange>
          <minimum>30</minimum>
          <maximum>120</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Deceleration</name>
      <description>How hard the car ahead brakes</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=2]/value</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>8</default>
        <RealRange>
          <minimum>4</minimum>
          <maximum>10</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Language</name>
      <description>Language of the messages</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=5]/value</parameterId>
      <parameterUnit></parameterUnit>
      <LiteralParameter>
        <default>en</default>
        <LiteralRange>
          <literal>en</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>de</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>fr</literal>
        </LiteralRange>
      </LiteralParameter>
    </VariadicParameter>
  </Scenario>
</sce>
