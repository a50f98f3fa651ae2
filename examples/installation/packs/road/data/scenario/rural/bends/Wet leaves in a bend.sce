<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Wet leaves in a bend</name>
    <description>Autumn. The bend after the wood is covered with leaves.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="90"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="21"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.5 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="autumn grip bend"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="rain"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="3000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0.4"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="280.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="0.7"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Forest road"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="1800"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="900"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="900"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1100"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="16.666666667"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="leaves"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="1100"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1800"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="22.222222222"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="850"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="bend"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="20.833333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.5"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Student"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="hasty"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Wet leaves"
	FILE=""
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Grip on the leaves"
		TYPE="FLOAT"
		VALUE="0.45"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0.10000000000000001"
		INTERACTIVE_MAX_VALUE="1"
		INTERACTIVE_STEP_VALUE="0.050000000000000003"
		CATEGORY="ROAD"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Speed in the bend"
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
		LABEL="On the leaves"

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
				VALUE="900"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (HIGH_VALUE)
			{
				KIND="USER"
				VALUE="1100"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_FRICTION)
		{

			TYPEOF PARAMETER (FRICTION)
			{
				KIND="VARIABLE"
				VALUE="1"
				OWNER_FILE=""
			}
		}

		TYPEOF ELSE_ACTION (SET_FRICTION)
		{

			TYPEOF PARAMETER (FRICTION)
			{
				KIND="ENUM"
				VALUE="FRICTION_WET"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (2)
	{
		LABEL="Highest speed on the leaves"

		TYPEOF CONDITION (AND)
		{

			TYPEOF CONDITION (INFERIOR)
			{

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
					VALUE="0.6"
					OWNER_FILE=""
				}
			}

			TYPEOF CONDITION (SUPERIOR)
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
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE=""
				}
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
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Before the bend"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Too fast"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_RAIN)
			{

				TYPEOF PARAMETER (INTENSITY)
				{
					KIND="USER"
					VALUE="0.4"
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
					VALUE="23.611"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="2"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Sign"

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
					VALUE="820"
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
		LABEL="In the bend"
		TASK_KIND="0"

		TYPEOF RULE (5)
		{
			LABEL="Slow enough"

			TYPEOF CONDITION (IS_VHL_SLOWER)
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
					VALUE="13.889"
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
					VALUE="13.889"
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

		TYPEOF RULE (6)
		{
			LABEL="Bend is over"

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
					VALUE="1120"
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
		LABEL="After the bend"
		TASK_KIND="0"

		TYPEOF RULE (7)
		{
			LABEL="Result"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (DISPLAY_VALUE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Speed in the bend"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (8)
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
