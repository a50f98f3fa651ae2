<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Hill start</name>
    <description>Stop at the sign on a gradient of twelve per cent, then drive off without rolling back.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="75"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="2"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="hill clutch"/>
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
      <name type="string" verboseName="Road" ScenarioTreeValue="Castle hill"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="600"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="600"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0.12"/>
      </Stretch>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="180"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="stop"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="8.333333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="100"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="100"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
      <Input>
        <name type="string" ScenarioTreeValue="clutch"/>
      </Input>
      <Input>
        <name type="string" ScenarioTreeValue="brake"/>
      </Input>
      <Input>
        <name type="string" ScenarioTreeValue="throttle"/>
      </Input>
      <Output>
        <name type="string" ScenarioTreeValue="rollback"/>
      </Output>
      <Output>
        <name type="string" ScenarioTreeValue="engineSpeed"/>
      </Output>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Image>
      <name type="string" verboseName="Image" ScenarioTreeValue="stop"/>
    </Image>
    <Sound>
      <name type="string" verboseName="Sound" ScenarioTreeValue="engine"/>
    </Sound>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Hill start"
	FILE="rural/hill_start.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Rolled back"
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
		LABEL="Seconds at the sign"
		TYPE="FLOAT"
		VALUE="3"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1"
		INTERACTIVE_MAX_VALUE="10"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF TASK (1)
	{
		LABEL="To the sign"
		TASK_KIND="0"

		TYPEOF RULE (1)
		{
			LABEL="Brake before the sign"

			TYPEOF CONDITION (SUPEQUAL)
			{

				TYPEOF PARAMETER (VALUE_A)
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

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="165"
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
					VALUE="GEAR_1"
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
		LABEL="At the sign"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Long enough"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{
				MODIFIER="HAS_BEEN_TRUE_FOR"
				DURATION="3.000000"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_INPUT)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VHL_INPUT)
				{
					KIND="VHC_INPUT"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="USER"
					VALUE="0.6"
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
		LABEL="Driving off"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Rolls back"

			TYPEOF CONDITION (SUPERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_OUTPUT)
					{

						TYPEOF PARAMETER (VHL_NUMBER)
						{
							KIND="VEHICLE"
							VALUE="0"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VHL_OUTPUT)
						{
							KIND="VHC_OUTPUT"
							VALUE="0"
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

			TYPEOF ACTION (SET_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="rural/hill_start.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_OUTPUT)
					{

						TYPEOF PARAMETER (VHL_NUMBER)
						{
							KIND="VEHICLE"
							VALUE="0"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VHL_OUTPUT)
						{
							KIND="VHC_OUTPUT"
							VALUE="0"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (5)
		{
			LABEL="Second gear"

			TYPEOF CONDITION (IS_VHL_FASTER)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="4"
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
					VALUE="GEAR_2"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (PLAY_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="SOUND"
					VALUE="engine"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VOLUME)
				{
					KIND="USER"
					VALUE="0.5"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (6)
		{
			LABEL="Exercise ends"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="15"
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
  </Scenario>
</sce>
