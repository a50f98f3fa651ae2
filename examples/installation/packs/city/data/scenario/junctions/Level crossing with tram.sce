<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Level crossing with tram</name>
    <description>The barrier closes late; a tram comes.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="110"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="12"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="tram barrier"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="rain"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="4000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0.3"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="282.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Tram Lane"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="1200"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Barrier>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="500"/>
        <closed type="boolean" verboseName="Closed" ScenarioTreeValue="false"/>
      </Barrier>
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
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="5"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Tram 14"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="tram_low_floor"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="9.722222222"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="900"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="-1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="900"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="3.141592654"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="32"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="39000"/>
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
      <name ScenarioTreeValue="Tram driver"/>
      <label ScenarioTreeValue="T14"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Level crossing"
	FILE="junctions/crossing.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Warning before the barrier"
		TYPE="FLOAT"
		VALUE="4"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1"
		INTERACTIVE_MAX_VALUE="10"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="TRAM"
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
		LABEL="Open"
		TASK_KIND="0"

		TYPEOF RULE (2)
		{
			LABEL="Tram sets off"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VHL_SPEED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="5"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="9.722"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_BARRIER)
			{

				TYPEOF PARAMETER (BARRIER_NUMBER)
				{
					KIND="BARRIER"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="NO"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (3)
		{
			LABEL="Tram comes"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (MINUS)
					{

						TYPEOF PARAMETER (VALUE_A)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (GET_VHL_ROAD_POSITION)
							{

								TYPEOF PARAMETER (VHL_NUMBER)
								{
									KIND="VEHICLE"
									VALUE="5"
									OWNER_FILE=""
								}
							}
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
						{
							KIND="USER"
							VALUE="500"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="220"
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
		LABEL="Warning"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Flashing"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_TRAFFIC_LIGHT)
			{

				TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
				{
					KIND="TRAFFIC_LIGHT"
					VALUE="7"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT_COLOUR)
				{
					KIND="ENUM"
					VALUE="COLOUR_FLASHING"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (PLAY_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="FILE"
					VALUE="warning.wav"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VOLUME)
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
					VALUE="3.5"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (5)
		{
			LABEL="Barrier"

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
					OWNER_FILE="junctions/crossing.sc"
				}
			}

			TYPEOF ACTION (SET_BARRIER)
			{

				TYPEOF PARAMETER (BARRIER_NUMBER)
				{
					KIND="BARRIER"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
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
		LABEL="Closed"
		TASK_KIND="0"

		TYPEOF RULE (6)
		{
			LABEL="Through the barrier"
			EVALUATION="ERROR"

			TYPEOF CONDITION (AND)
			{

				TYPEOF CONDITION (IS_BARRIER_CLOSED)
				{

					TYPEOF PARAMETER (BARRIER_NUMBER)
					{
						KIND="BARRIER"
						VALUE="0"
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
						VALUE="499"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (HIGH_VALUE)
					{
						KIND="USER"
						VALUE="505"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Drove through the barrier"
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

		TYPEOF RULE (7)
		{
			LABEL="Tram has passed"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_ROAD_POSITION)
					{

						TYPEOF PARAMETER (VHL_NUMBER)
						{
							KIND="VEHICLE"
							VALUE="5"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="450"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_BARRIER)
			{

				TYPEOF PARAMETER (BARRIER_NUMBER)
				{
					KIND="BARRIER"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="NO"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (REMOVE_VHL)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="5"
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
		LABEL="Open again"
		TASK_KIND="0"

		TYPEOF RULE (8)
		{
			LABEL="Barrier is up"

			TYPEOF CONDITION (EQUAL)
			{

				TYPEOF PARAMETER (FLAG_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_BARRIER)
					{

						TYPEOF PARAMETER (BARRIER_NUMBER)
						{
							KIND="BARRIER"
							VALUE="0"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (FLAG_B)
				{
					KIND="USER"
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
					KIND="USER"
					VALUE="12.5"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="1.5"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (9)
		{
			LABEL="Exercise ends"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="8"
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
