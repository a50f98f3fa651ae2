<?xml version="1.0" encoding="UTF-8"?>
<!-- The truck's speed and the van are what an instructor usually varies. -->
<sce version="1">
  <Scenario>
    <name>Überholen auf der Landstraße</name>
    <description>Zwei Fahrstreifen, ein langsamer Lastwagen, Gegenverkehr. Überholen, wenn die Lücke reicht; sonst dahinter bleiben.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="180"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="7"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="rural overtaking oncoming"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="294.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="L 312"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="5200"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777777778"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="3100"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777777778"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="3100"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="5200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="19.444444444"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0.035"/>
      </Stretch>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="3100"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="70"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_estate"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="23.611111111"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.7"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1480"/>
      <automaticGearbox type="boolean" verboseName="Automatic gearbox" ScenarioTreeValue="true"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="3"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Truck"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="truck_18t"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="16.666666667"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="120"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="120"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="10.2"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="14500"/>
      <indicatorsWork type="boolean" verboseName="Indicators work" ScenarioTreeValue="true"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="4"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Oncoming van"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="van_delivery"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="26.388888889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="900"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="-1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="900"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="-1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="3.141592654"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="6.1"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="2300"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Anna Křížová"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.95"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Bernd"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.8"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Chloé"/>
      <label ScenarioTreeValue="V1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="hasty"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.6"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Overtaking"
	FILE="rural/overtaking.sc"
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
		FILE="school/instructor keys.sc"
	}

	TYPEOF INCLUDE (3)
	{
		LABEL="Lights in the dusk"
		TASK_KIND="0"
		FILE="rural/lights.sc"

		TYPEOF VARIABLE (30)
		{
			LABEL="Lights were on"
			TYPE="BOOL"
			VALUE="0"
			INTERACTIVE_TYPE="BOOL"
			IS_INITIALIZATION_NEEDED_AT_START="0"
			INTERACTIVE_MIN_VALUE="0"
			INTERACTIVE_MAX_VALUE="9999"
			INTERACTIVE_STEP_VALUE="1"
			CATEGORY="CHECK"
		}

		TYPEOF RULE (1)
		{
			LABEL="Low beam seen"

			TYPEOF CONDITION (IS_VHL_LIGHT_ON)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT)
				{
					KIND="ENUM"
					VALUE="LIGHT_LOW_BEAM"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_FLAG)
			{

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="30"
					OWNER_FILE="rural/lights.sc"
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF VARIABLE (1)
	{
		LABEL="Truck speed"
		TYPE="FLOAT"
		VALUE="16.667"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="1"
		INTERACTIVE_MIN_VALUE="13.9"
		INTERACTIVE_MAX_VALUE="25"
		INTERACTIVE_STEP_VALUE="0.10000000000000001"
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

	TYPEOF VARIABLE (3)
	{
		LABEL="Name of the student"
		TYPE="STRING"
		VALUE="Anna"
		INTERACTIVE_TYPE="STRING"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="STUDENT"
	}

	TYPEOF VARIABLE (4)
	{
		LABEL="Oncoming traffic"
		TYPE="BOOL"
		VALUE="1"
		INTERACTIVE_TYPE="BOOL"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="TRAFFIC"
	}

	TYPEOF VARIABLE (5)
	{
		LABEL="Attempts allowed"
		TYPE="INTEGER"
		VALUE="3"
		INTERACTIVE_TYPE="INTEGER"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1"
		INTERACTIVE_MAX_VALUE="9"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="STUDENT"
	}

	TYPEOF VARIABLE (6)
	{
		LABEL="Gap to the oncoming van"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF RULE (2)
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

	TYPEOF RULE (3)
	{
		LABEL="Gap"

		TYPEOF CONDITION (EVERY)
		{

			TYPEOF PARAMETER (PERIOD)
			{
				KIND="USER"
				VALUE="1"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_VARIABLE)
		{

			TYPEOF PARAMETER (VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="6"
				OWNER_FILE="rural/overtaking.sc"
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
						VALUE="4"
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (4)
	{
		LABEL="Time is up"

		TYPEOF CONDITION (IS_TIME_AFTER)
		{

			TYPEOF PARAMETER (SCENARIO_TIME)
			{
				KIND="USER"
				VALUE="180"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (DISPLAY_MESSAGE)
		{

			TYPEOF PARAMETER (MESSAGE)
			{
				KIND="USER"
				VALUE="Time is up"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (DISPLAY_TIME)
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

	TYPEOF TASK (1)
	{
		LABEL="Approach"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Set off"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_SPEED_LIMIT)
			{

				TYPEOF PARAMETER (SPEED)
				{
					KIND="ENUM"
					VALUE="SPEED_ROAD"
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
					VALUE="26.389"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="1.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_SPEED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="rural/overtaking.sc"
				}
			}

			TYPEOF ACTION (DISPLAY_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Follow the road"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISPLAY_TIME)
				{
					KIND="USER"
					VALUE="4"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (START_RECORDING)
			{

				TYPEOF PARAMETER (COMMENT)
				{
					KIND="USER"
					VALUE="Overtaking"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="Truck ahead"

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
							VALUE="3"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="45"
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
		LABEL="Wait for a gap"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="Stay behind"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
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
					VALUE="3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (HEADWAY)
				{
					KIND="USER"
					VALUE="1.8"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DISPLAY_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="A slow truck"
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

		TYPEOF RULE (8)
		{
			LABEL="No oncoming traffic wanted"

			TYPEOF CONDITION (IS_VARIABLE_TRUE)
			{
				MODIFIER="IS_FALSE"

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="4"
					OWNER_FILE="rural/overtaking.sc"
				}
			}

			TYPEOF ACTION (REMOVE_VHL)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="4"
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

		TYPEOF RULE (9)
		{
			LABEL="Van has passed"

			TYPEOF CONDITION (AND)
			{

				TYPEOF CONDITION (IS_VARIABLE_TRUE)
				{

					TYPEOF PARAMETER (BOOL_VARIABLE_REF)
					{
						KIND="VARIABLE"
						VALUE="4"
						OWNER_FILE="rural/overtaking.sc"
					}
				}

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
								VALUE="4"
								OWNER_FILE=""
							}
						}
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
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
		LABEL="Pull out"
		TASK_KIND="0"

		TYPEOF RULE (10)
		{
			LABEL="Signal and accelerate"

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
					VALUE="SIDE_LEFT"
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
					VALUE="3"
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
					VALUE="SPEED_ROAD"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="2.5"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (11)
		{
			LABEL="Changed lane"

			TYPEOF CONDITION (IS_VHL_ON_LANE)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LANE)
				{
					KIND="ENUM"
					VALUE="LANE_MIDDLE"
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
		}

		TYPEOF RULE (12)
		{
			LABEL="Far enough ahead"

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
							VALUE="3"
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
							VALUE="-1"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (MAXIMUM)
							{

								TYPEOF PARAMETER (VALUE_A)
								{
									KIND="USER"
									VALUE="25"
									OWNER_FILE=""
								}

								TYPEOF PARAMETER (VALUE_B)
								{
									KIND="FUNCTION"

									TYPEOF FUNCTION (MULTIPLY)
									{

										TYPEOF PARAMETER (VALUE_A)
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

										TYPEOF PARAMETER (VALUE_B)
										{
											KIND="USER"
											VALUE="1.2"
											OWNER_FILE=""
										}
									}
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
					VALUE="4"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (4)
	{
		LABEL="Pull in"
		TASK_KIND="0"

		TYPEOF RULE (13)
		{
			LABEL="Back to the right"

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
					VALUE="SIDE_RIGHT"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (CHANGE_TIME)
				{
					KIND="USER"
					VALUE="3"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (ADD_TO_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="rural/overtaking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (14)
		{
			LABEL="Back on the right lane"

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

			TYPEOF ACTION (NEXT_STATE_AFTER)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="5"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="4"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (5)
	{
		LABEL="Done"
		TASK_KIND="0"

		TYPEOF RULE (15)
		{
			LABEL="Praise"

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
					VALUE="1"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SPEAK)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE="rural/overtaking.sc"
				}

				TYPEOF PARAMETER (LANGUAGE)
				{
					KIND="ENUM"
					VALUE="ENGLISH"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (DISPLAY_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Well done"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISPLAY_TIME)
				{
					KIND="USER"
					VALUE="5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (ADD_TIME_MARKER)
			{

				TYPEOF PARAMETER (MARKER_NOTE)
				{
					KIND="USER"
					VALUE="Overtaken"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (MARKER_KEYWORDS)
				{
					KIND="USER"
					VALUE="overtaking done"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (STOP_RECORDING)
			{
			}
		}

		TYPEOF RULE (16)
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

	TYPEOF GENERAL_PARAMETERS (0)
	{
	}
}
</text>
    </ScenarioScript>
    <VariadicParameter>
      <name>Truck speed</name>
      <description>How fast the truck drives.</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=3]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>60</default>
        <RealRange>
          <minimum>50</minimum>
          <maximum>70</maximum>
        </RealRange>
        <RealRange>
          <minimum>75</minimum>
          <maximum>90</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Lane of the van</name>
      <description>−1 is the oncoming lane.</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=4]/lane</parameterId>
      <parameterUnit></parameterUnit>
      <IntegerParameter>
        <default>-1</default>
        <IntegerRange>
          <minimum>-1</minimum>
          <maximum>-1</maximum>
        </IntegerRange>
        <IntegerRange>
          <minimum>1</minimum>
          <maximum>2</maximum>
        </IntegerRange>
      </IntegerParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Fog</name>
      <description>Fog on the road</description>
      <parameterId>/sce/Scenario/Weather/fog</parameterId>
      <parameterUnit></parameterUnit>
      <BooleanParameter>
        <default>false</default>
      </BooleanParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Surface</name>
      <description>Surface of the first stretch</description>
      <parameterId>/sce/Scenario/Road/Stretch/surface</parameterId>
      <parameterUnit></parameterUnit>
      <LiteralParameter>
        <default>asphalt</default>
        <LiteralRange>
          <literal>asphalt</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>concrete</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>cobbles</literal>
        </LiteralRange>
      </LiteralParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Oncoming traffic</name>
      <description>Whether the van comes at all</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=4]/value</parameterId>
      <parameterUnit></parameterUnit>
      <BooleanParameter>
        <default>true</default>
      </BooleanParameter>
    </VariadicParameter>
  </Scenario>
</sce>
