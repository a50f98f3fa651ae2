<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Traffic light</name>
    <description>The light turns amber at the worst moment.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="90"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="6"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="junction light"/>
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
      <name type="string" verboseName="Road" ScenarioTreeValue="Main Street"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="900"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="900"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="400"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="green"/>
      </TrafficLight>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="13.333333333"/>
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
      <name ScenarioTreeValue="Crossing car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="11.111111111"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="380"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="3"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="380"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="1.570796327"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
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
      <name ScenarioTreeValue="Crossing"/>
      <label ScenarioTreeValue="C1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Traffic light"
	FILE="junctions/traffic_light.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Seconds of amber"
		TYPE="FLOAT"
		VALUE="3"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="2"
		INTERACTIVE_MAX_VALUE="5"
		INTERACTIVE_STEP_VALUE="0.5"
		CATEGORY="LIGHT"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Stopped in time"
		TYPE="BOOL"
		VALUE="0"
		INTERACTIVE_TYPE="BOOL"
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

	TYPEOF RULE (2)
	{
		LABEL="Ran a red light"
		EVALUATION="ERROR"

		TYPEOF CONDITION (AND)
		{
			MODIFIER="BECOMES_TRUE"

			TYPEOF CONDITION (IS_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_RED"
					OWNER_FILE=""
				}
			}

			TYPEOF CONDITION (IS_BETWEEN)
			{

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_ROAD_POSITION)
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

				TYPEOF PARAMETER (LOW_VALUE)
				{
					KIND="USER"
					VALUE="400"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (HIGH_VALUE)
				{
					KIND="USER"
					VALUE="410"
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
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF ACTION (LOG_MESSAGE)
		{

			TYPEOF PARAMETER (MESSAGE)
			{
				KIND="USER"
				VALUE="Ran a red light"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (SEVERITY)
			{
				KIND="ENUM"
				VALUE="ERROR"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Green"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Drive"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_GREEN"
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
					VALUE="13.889"
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

		TYPEOF RULE (4)
		{
			LABEL="Worst moment"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (MINUS)
					{

						TYPEOF PARAMETER (VALUE_A)
						{
							KIND="USER"
							VALUE="400"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (GET_VHL_ROAD_POSITION)
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
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (MULTIPLY)
					{

						TYPEOF PARAMETER (VALUE_A)
						{
							KIND="USER"
							VALUE="3"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
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
					}
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
		LABEL="Amber"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Amber"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_AMBER"
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
					VALUE="3"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="Over"

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
					OWNER_FILE="junctions/traffic_light.sc"
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
		LABEL="Red"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="Red"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_RED"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_LANE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LANE)
				{
					KIND="ENUM"
					VALUE="LANE_RIGHT"
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
		}

		TYPEOF RULE (8)
		{
			LABEL="Stands"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_FLAG)
			{

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="junctions/traffic_light.sc"
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (9)
		{
			LABEL="Long"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="12"
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
		LABEL="Red and amber"
		TASK_KIND="0"

		TYPEOF RULE (10)
		{
			LABEL="Ready"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_RED_AMBER"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (11)
		{
			LABEL="Go"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="1.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="5"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (5)
	{
		LABEL="Green again"
		TASK_KIND="0"

		TYPEOF RULE (12)
		{
			LABEL="Go"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_GREEN"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (APPLY_PROFILE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (PROFILE_FILE)
				{
					KIND="FILE"
					VALUE="gentle_start.profile"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (13)
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
      <name>Start</name>
      <description>Speed at the start</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=0]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>48</default>
        <RealRange>
          <minimum>30</minimum>
          <maximum>50</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Colour</name>
      <description>Colour at the start</description>
      <parameterId>/sce/Scenario/Road/TrafficLight/colour</parameterId>
      <parameterUnit></parameterUnit>
      <LiteralParameter>
        <default>green</default>
        <LiteralRange>
          <literal>green</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>amber</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>red</literal>
        </LiteralRange>
      </LiteralParameter>
    </VariadicParameter>
  </Scenario>
</sce>
