<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Everything at once</name>
    <description>All old calls in one script, with nested states.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="20"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="none"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="107"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 0 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="archive"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="13.888888889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Second car"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="11.111111111"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="50"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="50"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Tester"/>
      <label ScenarioTreeValue="T1"/>
    </Driver>
    <Image>
      <name type="string" verboseName="Image" ScenarioTreeValue="plan"/>
    </Image>
    <ScenarioScript>
      <scriptName>old</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Everything at once"
	FILE="archive/everything.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Channel"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Old hand"
		TYPE="STRING"
		VALUE="Bertil"
		INTERACTIVE_TYPE="STRING"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF TASK (1)
	{
		LABEL="Drive"
		TASK_KIND="0"

		TYPEOF RULE (1)
		{
			LABEL="Channel"

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
					VALUE="1"
					OWNER_FILE="archive/everything.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (PLUS)
					{

						TYPEOF PARAMETER (VALUE_A)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (GET_EXPORTED_CHANNEL)
							{

								TYPEOF PARAMETER (USER_DATA_ID)
								{
									KIND="EXPORT_CHANNEL"
									VALUE="5"
									OWNER_FILE=""
								}
							}
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
						{
							KIND="USER"
							VALUE="1"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (2)
		{
			LABEL="There"

			TYPEOF CONDITION (OR)
			{

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
						VALUE="120"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (MAP_Y)
					{
						KIND="USER"
						VALUE="1.75"
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

			TYPEOF ACTION (SET_IMAGE)
			{

				TYPEOF PARAMETER (IMAGE_NAME)
				{
					KIND="FILE"
					VALUE="arrow_left.png"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (CHANNEL_NAME)
				{
					KIND="ENUM"
					VALUE="CHANNEL_CENTRE"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_X)
				{
					KIND="USER"
					VALUE="0.1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_Y)
				{
					KIND="USER"
					VALUE="0.1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_WIDTH)
				{
					KIND="USER"
					VALUE="0.2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_HEIGHT)
				{
					KIND="USER"
					VALUE="0.2"
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
		LABEL="Arrived"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Old calls"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (INIT_ANIMATION)
			{

				TYPEOF PARAMETER (ANIMATION_ID)
				{
					KIND="USER"
					VALUE="3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_OFFSET_X)
				{
					KIND="USER"
					VALUE="0.5"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_OFFSET_Y)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_NAME)
				{
					KIND="USER"
					VALUE="wave"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VHL_NUMBER_PLUS)
				{
					KIND="VEHICLE"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_LOOP)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (INIT_ANIMATION)
			{

				TYPEOF PARAMETER (ANIMATION_ID)
				{
					KIND="USER"
					VALUE="3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_OFFSET_X)
				{
					KIND="USER"
					VALUE="0.5"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_OFFSET_Y)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_NAME)
				{
					KIND="USER"
					VALUE="wave"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VHL_NUMBER_PLUS)
				{
					KIND="VEHICLE"
					VALUE="-1"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_LOOP)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SNAPSHOT)
			{

				TYPEOF PARAMETER (CHANNEL_NAME)
				{
					KIND="ENUM"
					VALUE="CHANNEL_CENTRE"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (ADD_TIME_MARKER)
			{

				TYPEOF PARAMETER (MARKER_NOTE)
				{
					KIND="USER"
					VALUE="Arrived"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Exercise ends"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="3"
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
