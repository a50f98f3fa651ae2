<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Roundabout</name>
    <description>Give way, keep right, indicate before leaving.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="70"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="10"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="junction roundabout"/>
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
      <name type="string" verboseName="Road" ScenarioTreeValue="Market Square"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="320"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="11.111111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="1"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="320"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="11.111111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="9.722222222"/>
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
      <name ScenarioTreeValue="In the circle"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="6.111111111"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="130"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="130"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Bicycle"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="bicycle"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="3.888888889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="150"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="150"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="1.8"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="85"/>
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
      <name ScenarioTreeValue="Circle"/>
      <label ScenarioTreeValue="C1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Cyclist"/>
      <label ScenarioTreeValue="Y1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="hasty"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.6"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Roundabout"
	FILE="junctions/roundabout.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="speed_monitor.sc"
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
		LABEL="Approach"
		TASK_KIND="0"

		TYPEOF RULE (2)
		{
			LABEL="Slower"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_SPEED_LIMIT)
			{

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="11.111"
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
					VALUE="-1.5"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (3)
		{
			LABEL="At the edge"

			TYPEOF CONDITION (IS_VHL_AT_POSITION)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (MAP_X)
				{
					KIND="USER"
					VALUE="100"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (MAP_Y)
				{
					KIND="USER"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (MAP_RADIUS)
				{
					KIND="USER"
					VALUE="12"
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
		LABEL="Give way"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Free"

			TYPEOF CONDITION (OR)
			{

				TYPEOF CONDITION (SUPERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="FUNCTION"

						TYPEOF FUNCTION (ABSOLUTE)
						{

							TYPEOF PARAMETER (INPUT_VALUE)
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
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
						VALUE="25"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (WAIT)
				{

					TYPEOF PARAMETER (DELAY)
					{
						KIND="USER"
						VALUE="8"
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
		LABEL="In the circle"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="In"

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
					VALUE="6.111"
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

		TYPEOF RULE (6)
		{
			LABEL="Before the exit"

			TYPEOF CONDITION (IS_VHL_IN_AREA)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (AREA_X1)
				{
					KIND="USER"
					VALUE="190"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (AREA_Y1)
				{
					KIND="USER"
					VALUE="-20"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (AREA_X2)
				{
					KIND="USER"
					VALUE="230"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (AREA_Y2)
				{
					KIND="USER"
					VALUE="20"
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
					VALUE="SIDE_RIGHT"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (7)
		{
			LABEL="Indicated"

			TYPEOF CONDITION (IS_VHL_INDICATING)
			{
				MODIFIER="HAS_BEEN_TRUE"

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

			TYPEOF ACTION (NOTHING)
			{
			}
		}

		TYPEOF RULE (8)
		{
			LABEL="Out"

			TYPEOF CONDITION (SUPEQUAL)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_X)
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
					VALUE="240"
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
