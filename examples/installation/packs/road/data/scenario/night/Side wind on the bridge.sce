<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Side wind on the bridge</name>
    <description>Gusts of up to twenty metres a second behind the sound barrier.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="90"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="19"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="wind bridge"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="291.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="14"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="20.5"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Valley bridge"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="1900"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777777778"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="600"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777777778"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="600"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1500"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="1500"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1900"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="27.777777778"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="van_delivery"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="25"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="6.1"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="2300"/>
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
	LABEL="Side wind"
	FILE=""
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Strongest gust"
		TYPE="FLOAT"
		VALUE="20"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="5"
		INTERACTIVE_MAX_VALUE="35"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="WEATHER"
	}

	TYPEOF RULE (1)
	{
		LABEL="Gusts on the bridge"

		TYPEOF CONDITION (AND)
		{

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
					VALUE="600"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (HIGH_VALUE)
				{
					KIND="USER"
					VALUE="1500"
					OWNER_FILE=""
				}
			}

			TYPEOF CONDITION (EVERY)
			{

				TYPEOF PARAMETER (PERIOD)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF ACTION (SET_WIND)
		{

			TYPEOF PARAMETER (WIND_SPEED)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (RANDOM)
				{

					TYPEOF PARAMETER (LOW_VALUE)
					{
						KIND="USER"
						VALUE="8"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (HIGH_VALUE)
					{
						KIND="VARIABLE"
						VALUE="1"
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (HEADING)
			{
				KIND="USER"
				VALUE="90"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (2)
	{
		LABEL="Shelter"

		TYPEOF CONDITION (IS_BETWEEN)
		{
			MODIFIER="BECOMES_FALSE"

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
				VALUE="600"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (HIGH_VALUE)
			{
				KIND="USER"
				VALUE="1500"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_WIND)
		{

			TYPEOF PARAMETER (WIND_SPEED)
			{
				KIND="USER"
				VALUE="2"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (HEADING)
			{
				KIND="USER"
				VALUE="90"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Drive"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Off"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_RANDOM_SEED)
			{

				TYPEOF PARAMETER (SEED)
				{
					KIND="USER"
					VALUE="19"
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
					VALUE="25"
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
			LABEL="Strong"

			TYPEOF CONDITION (SUPERIOR)
			{
				MODIFIER="HAS_BEEN_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_WIND_SPEED)
					{
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="15"
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
					VALUE="19.444"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="-1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (5)
		{
			LABEL="End"

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
					VALUE="1800"
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
