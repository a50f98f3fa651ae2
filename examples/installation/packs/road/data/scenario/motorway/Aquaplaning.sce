<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Aquaplaning</name>
    <description>A cloudburst. Above eighty the tyres float.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="90"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="17"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="motorway rain"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="rain"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="1200"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0.9"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="287.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="0.7"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="A 61"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="5000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="2000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="2000"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="2300"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="water"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="2300"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="5000"/>
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
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="30.555555556"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
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
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Aquaplaning"
	FILE="motorway/aquaplaning.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Depth of the water in mm"
		TYPE="FLOAT"
		VALUE="6"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="20"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="ROAD"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Speed at which the tyres float"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF RULE (1)
	{
		LABEL="Grip"

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
				VALUE="2000"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (HIGH_VALUE)
			{
				KIND="USER"
				VALUE="2300"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_FRICTION)
		{

			TYPEOF PARAMETER (FRICTION)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (INTERPOLATE)
				{

					TYPEOF PARAMETER (X_VALUE)
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

					TYPEOF PARAMETER (X_FROM)
					{
						KIND="USER"
						VALUE="18"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (Y_FROM)
					{
						KIND="USER"
						VALUE="0.7"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (X_TO)
					{
						KIND="USER"
						VALUE="26"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (Y_TO)
					{
						KIND="USER"
						VALUE="0.05"
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}
		}

		TYPEOF ELSE_ACTION (SET_FRICTION)
		{

			TYPEOF PARAMETER (FRICTION)
			{
				KIND="USER"
				VALUE="0.7"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Rain"
		TASK_KIND="0"

		TYPEOF RULE (2)
		{
			LABEL="Cloudburst"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_WEATHER)
			{

				TYPEOF PARAMETER (WEATHER)
				{
					KIND="ENUM"
					VALUE="WEATHER_RAIN"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_RAIN)
			{

				TYPEOF PARAMETER (INTENSITY)
				{
					KIND="USER"
					VALUE="0.9"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="motorway/aquaplaning.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (DIVIDE)
					{

						TYPEOF PARAMETER (VALUE_A)
						{
							KIND="USER"
							VALUE="60"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (SQUARE_ROOT)
							{

								TYPEOF PARAMETER (INPUT_VALUE)
								{
									KIND="VARIABLE"
									VALUE="1"
									OWNER_FILE="motorway/aquaplaning.sc"
								}
							}
							OWNER_FILE=""
						}
					}
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
					VALUE="29.167"
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

		TYPEOF RULE (3)
		{
			LABEL="Sees the water"

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
					VALUE="1750"
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
					VALUE="20.833"
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
		LABEL="On the water"
		TASK_KIND="0"

		TYPEOF VARIABLE (9)
		{
			LABEL="Has floated"
			TYPE="BOOL"
			VALUE="0"
			INTERACTIVE_TYPE="BOOL"
			IS_INITIALIZATION_NEEDED_AT_START="0"
			INTERACTIVE_MIN_VALUE="0"
			INTERACTIVE_MAX_VALUE="9999"
			INTERACTIVE_STEP_VALUE="1"
			CATEGORY="INTERNAL"
		}

		TYPEOF RULE (4)
		{
			LABEL="Floats"

			TYPEOF CONDITION (INFERIOR)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_FRICTION)
					{
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="0.2"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SPEAK)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Hold the wheel still"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LANGUAGE)
				{
					KIND="ENUM"
					VALUE="ENGLISH"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_FLAG)
			{

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="9"
					OWNER_FILE="motorway/aquaplaning.sc"
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (5)
		{
			LABEL="Over"

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
					VALUE="2350"
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
		LABEL="Dry"
		TASK_KIND="0"

		TYPEOF RULE (6)
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
