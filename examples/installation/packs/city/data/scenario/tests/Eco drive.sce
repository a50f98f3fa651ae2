<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Eco drive</name>
    <description>Little fuel, few gear changes, early upshifts.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="300"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="easy"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="4"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="eco"/>
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
      <name type="string" verboseName="Road" ScenarioTreeValue="Ring road"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="4200"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="16.666666667"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="4200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="16.666666667"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="1400"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="green"/>
      </TrafficLight>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="5.555555556"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
      <Input>
        <name type="string" ScenarioTreeValue="throttle"/>
      </Input>
      <Output>
        <name type="string" ScenarioTreeValue="fuel"/>
      </Output>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.95"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Eco drive"
	FILE=""
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Fuel used"
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
		LABEL="Gear changes"
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
		LABEL="Shift up at rpm"
		TYPE="FLOAT"
		VALUE="2200"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1500"
		INTERACTIVE_MAX_VALUE="4000"
		INTERACTIVE_STEP_VALUE="100"
		CATEGORY="ECO"
	}

	TYPEOF RULE (1)
	{
		LABEL="Fuel"

		TYPEOF CONDITION (EVERY)
		{

			TYPEOF PARAMETER (PERIOD)
			{
				KIND="USER"
				VALUE="1"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (ADD_TO_VARIABLE)
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

				TYPEOF FUNCTION (MULTIPLY)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="USER"
						VALUE="0.002"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="FUNCTION"

						TYPEOF FUNCTION (PLUS)
						{

							TYPEOF PARAMETER (VALUE_A)
							{
								KIND="USER"
								VALUE="1"
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

										TYPEOF FUNCTION (GET_VHL_ACCELERATION)
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
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (2)
	{
		LABEL="Shift up"

		TYPEOF CONDITION (AND)
		{

			TYPEOF CONDITION (SUPERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_ENGINE_SPEED)
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
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE=""
				}
			}

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VHL_GEAR)
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
					VALUE="5"
					OWNER_FILE=""
				}
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
				KIND="FUNCTION"

				TYPEOF FUNCTION (ROUND)
				{

					TYPEOF PARAMETER (INPUT_VALUE)
					{
						KIND="FUNCTION"

						TYPEOF FUNCTION (PLUS)
						{

							TYPEOF PARAMETER (VALUE_A)
							{
								KIND="FUNCTION"

								TYPEOF FUNCTION (GET_VHL_GEAR)
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
								VALUE="1"
								OWNER_FILE=""
							}
						}
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (ADD_TO_VARIABLE)
		{

			TYPEOF PARAMETER (VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="2"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VALUE_B)
			{
				KIND="USER"
				VALUE="1"
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
			LABEL="Gently"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
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
					VALUE="16.111"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="0.8"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Round the ring"

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
					VALUE="4000"
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
		LABEL="Result"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Litres"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (DISPLAY_VALUE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Fuel used"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_CHANNEL)
			{

				TYPEOF PARAMETER (CHANNEL_CATEGORY)
				{
					KIND="EXPORT_CHANNEL_CATEGORY"
					VALUE="eco"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (CHANNEL_KEY)
				{
					KIND="EXPORT_CHANNEL_NAME"
					VALUE="fuel"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="VARIABLE"
					VALUE="1"
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
					VALUE="5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (STOP_SCENARIO)
			{
			}
		}
	}

	TYPEOF EVALUATION (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="marking/basic.sc"
	}
}
</text>
    </ScenarioScript>
  </Scenario>
</sce>
