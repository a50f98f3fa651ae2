<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Joining from a slip road</name>
    <description>Accelerate on the slip road, find a gap between the trucks, join.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="80"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="8"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 -1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="motorway joining"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="291.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="A 7"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="3000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="3000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="16.666666667"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="0"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="-1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="First truck"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="truck_18t"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="22.777777778"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="40"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="40"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Second truck"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="truck_18t"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="22.777777778"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="-40"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="-40"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
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
      <name ScenarioTreeValue="Franz"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.8"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Greta"/>
      <label ScenarioTreeValue="T2"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Joining"
	FILE=""
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Gap ahead"
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
		LABEL="Gap behind"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (3)
	{
		LABEL="Gap needed"
		TYPE="FLOAT"
		VALUE="22"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="10"
		INTERACTIVE_MAX_VALUE="60"
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

	TYPEOF RULE (2)
	{
		LABEL="Gaps"

		TYPEOF CONDITION (ALWAYS)
		{
		}

		TYPEOF ACTION (SET_VARIABLE)
		{

			TYPEOF PARAMETER (VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="1"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VALUE_B)
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
		}

		TYPEOF ACTION (SET_VARIABLE)
		{

			TYPEOF PARAMETER (VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="2"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VALUE_B)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (MINUS)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
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
								VALUE="2"
								OWNER_FILE=""
							}
						}
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="On the slip road"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Accelerate"

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
					VALUE="26.389"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="2.2"
					OWNER_FILE=""
				}
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
					VALUE="SIDE_LEFT"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Gap"

			TYPEOF CONDITION (AND)
			{

				TYPEOF CONDITION (SUPERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="VARIABLE"
						VALUE="1"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="VARIABLE"
						VALUE="3"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (SUPERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="VARIABLE"
						VALUE="2"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="VARIABLE"
						VALUE="3"
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
						VALUE="20.833"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF ACTION (CHANGE_LANE)
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
					VALUE="SIDE_LEFT"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (CHANGE_TIME)
				{
					KIND="USER"
					VALUE="3"
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

		TYPEOF RULE (5)
		{
			LABEL="End of the slip road"

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
					VALUE="320"
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
					VALUE="6"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="No gap"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SEVERITY)
				{
					KIND="ENUM"
					VALUE="WARNING"
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

	TYPEOF TASK (2)
	{
		LABEL="Joining"
		TASK_KIND="0"

		TYPEOF RULE (6)
		{
			LABEL="Joined"

			TYPEOF CONDITION (IS_VHL_ON_LANE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LANE)
				{
					KIND="ENUM"
					VALUE="LANE_RIGHT"
					OWNER_FILE=""
				}
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
					KIND="FUNCTION"

					TYPEOF FUNCTION (LIMIT)
					{

						TYPEOF PARAMETER (INPUT_VALUE)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (GET_VHL_SPEED)
							{

								TYPEOF PARAMETER (VHL_NUMBER)
								{
									KIND="VEHICLE"
									VALUE="1"
									OWNER_FILE=""
								}
							}
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (LOW_VALUE)
						{
							KIND="USER"
							VALUE="20"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (HIGH_VALUE)
						{
							KIND="USER"
							VALUE="25"
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
		LABEL="Waiting at the end"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="All past"

			TYPEOF CONDITION (OR)
			{

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
								VALUE="2"
								OWNER_FILE=""
							}
						}
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
						VALUE="-200"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (SUPERIOR)
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
								VALUE="2"
								OWNER_FILE=""
							}
						}
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
						VALUE="60"
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
					VALUE="22.222"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="2.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (CHANGE_LANE)
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
					VALUE="SIDE_LEFT"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (CHANGE_TIME)
				{
					KIND="USER"
					VALUE="4"
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

	TYPEOF TASK (4)
	{
		LABEL="Joined"
		TASK_KIND="0"

		TYPEOF RULE (8)
		{
			LABEL="Exercise ends"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="6"
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
