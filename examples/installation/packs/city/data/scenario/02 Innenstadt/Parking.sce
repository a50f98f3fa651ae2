<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Parking</name>
    <description>Backwards, between two cars, without touching either.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="120"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="18"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="parking"/>
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
      <name type="string" verboseName="Road" ScenarioTreeValue="Side Street"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="200"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="8.333333333"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="1"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="8.333333333"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="2.777777778"/>
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
      <name ScenarioTreeValue="Front car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="44"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="0"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="44"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Rear car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_estate"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="32"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="0"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="32"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Nobody"/>
      <label ScenarioTreeValue="N"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Parking"
	FILE="innenstadt/parking.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Turns"
		TYPE="INTEGER"
		VALUE="0"
		INTERACTIVE_TYPE="INTEGER"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Turns so far"
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
		LABEL="Touched"
		TYPE="BOOL"
		VALUE="0"
		INTERACTIVE_TYPE="BOOL"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF TASK (1)
	{
		LABEL="Beside the gap"
		TASK_KIND="0"

		TYPEOF RULE (1)
		{
			LABEL="Beside the front car"

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
					VALUE="43"
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

		TYPEOF RULE (2)
		{
			LABEL="Stands"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_GEAR)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (GEAR)
				{
					KIND="ENUM"
					VALUE="GEAR_REVERSE"
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
		LABEL="Backwards"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Turn"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (ADD_TO_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="innenstadt/parking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_INTEGER_VARIABLE)
			{

				TYPEOF PARAMETER (INTEGER_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="innenstadt/parking.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="innenstadt/parking.sc"
				}
			}

			TYPEOF ACTION (SET_VHL_POSITION)
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
					VALUE="38"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (MAP_Y)
				{
					KIND="USER"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (HEADING)
				{
					KIND="USER"
					VALUE="0"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_LANE)
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
					VALUE="LANE_SHOULDER"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="In the gap"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="6"
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
		LABEL="Check"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Touched"

			TYPEOF CONDITION (INFERIOR)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (MINIMUM)
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
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="4.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_FLAG)
			{

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE="innenstadt/parking.sc"
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="Again"

			TYPEOF CONDITION (AND)
			{

				TYPEOF CONDITION (IS_VARIABLE_TRUE)
				{

					TYPEOF PARAMETER (BOOL_VARIABLE_REF)
					{
						KIND="VARIABLE"
						VALUE="3"
						OWNER_FILE="innenstadt/parking.sc"
					}
				}

				TYPEOF CONDITION (INFERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="VARIABLE"
						VALUE="2"
						OWNER_FILE="innenstadt/parking.sc"
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
						VALUE="3"
						OWNER_FILE=""
					}
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

		TYPEOF RULE (7)
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
