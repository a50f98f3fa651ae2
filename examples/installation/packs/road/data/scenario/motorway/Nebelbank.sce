<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Nebelbank</name>
    <description>Die Sicht fällt in zwanzig Sekunden von 2000 m auf 60 m, und dahinter steht ein Stau.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="150"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="hard"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="11"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="motorway fog jam"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="2000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="276.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="6.5"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="A 96"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="12000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="12000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="1500"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="80"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Schülerin"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="33.333333333"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
      <fogLights type="boolean" verboseName="Fog lights fitted" ScenarioTreeValue="true"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Stauende"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="truck_18t"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="2600"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="2600"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="1.75"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="16.5"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="32000"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Jana"/>
      <label ScenarioTreeValue="S1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Ivo"/>
      <label ScenarioTreeValue="T1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Sound>
      <name type="string" verboseName="Sound" ScenarioTreeValue="fog_warning"/>
    </Sound>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="fog"/>
    </Trigger>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Nebelbank"
	FILE="motorway/nebelbank.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="weather/fog_bank.sc"
	}

	TYPEOF INCLUDE (2)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="speed_monitor.sc"
	}

	TYPEOF VARIABLE (1)
	{
		LABEL="Sicht im Nebel"
		TYPE="FLOAT"
		VALUE="60"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="20"
		INTERACTIVE_MAX_VALUE="150"
		INTERACTIVE_STEP_VALUE="5"
		CATEGORY="WETTER"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Höchste Geschwindigkeit im Nebel"
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
		LABEL="Warnung gesprochen"
		TYPE="BOOL"
		VALUE="0"
		INTERACTIVE_TYPE="BOOL"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
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
		LABEL="Höchste Geschwindigkeit"

		TYPEOF CONDITION (AND)
		{

			TYPEOF CONDITION (IS_VISIBILITY_BELOW)
			{

				TYPEOF PARAMETER (VISIBILITY)
				{
					KIND="USER"
					VALUE="150"
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
					OWNER_FILE="motorway/nebelbank.sc"
				}
			}
		}

		TYPEOF ACTION (SET_VARIABLE)
		{

			TYPEOF PARAMETER (VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="2"
				OWNER_FILE="motorway/nebelbank.sc"
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

	TYPEOF RULE (3)
	{
		LABEL="Faustregel: Sicht gleich Tempo"
		EVALUATION="WARNING"

		TYPEOF CONDITION (SUPERIOR)
		{
			MODIFIER="HAS_BEEN_TRUE_FOR"
			DURATION="5.000000"

			TYPEOF PARAMETER (VALUE_A)
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
						VALUE="3.6"
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VALUE_B)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_VISIBILITY)
				{
				}
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_FLAG)
		{

			TYPEOF PARAMETER (BOOL_VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="3"
				OWNER_FILE="motorway/nebelbank.sc"
			}

			TYPEOF PARAMETER (ENABLED)
			{
				KIND="ENUM"
				VALUE="YES"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Freie Fahrt"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Losfahren"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_SPEED_LIMIT)
			{

				TYPEOF PARAMETER (SPEED)
				{
					KIND="ENUM"
					VALUE="SPEED_MOTORWAY"
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
					VALUE="34.722"
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

		TYPEOF RULE (5)
		{
			LABEL="Nebel"

			TYPEOF CONDITION (IS_VISIBILITY_BELOW)
			{

				TYPEOF PARAMETER (VISIBILITY)
				{
					KIND="USER"
					VALUE="1000"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (PLAY_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="SOUND"
					VALUE="fog_warning"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VOLUME)
				{
					KIND="USER"
					VALUE="0.7"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (FIRE_TRIGGER)
			{

				TYPEOF PARAMETER (TRIGGER_NAME)
				{
					KIND="TRIGGER"
					VALUE="fog"
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
		LABEL="Im Nebel"
		TASK_KIND="0"

		TYPEOF RULE (6)
		{
			LABEL="Langsamer"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VHL_LIGHT)
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
					VALUE="LIGHT_FOG_REAR"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ENABLED)
				{
					KIND="ENUM"
					VALUE="YES"
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

					TYPEOF FUNCTION (MAXIMUM)
					{

						TYPEOF PARAMETER (VALUE_A)
						{
							KIND="USER"
							VALUE="14"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (VALUE_B)
						{
							KIND="FUNCTION"

							TYPEOF FUNCTION (DIVIDE)
							{

								TYPEOF PARAMETER (VALUE_A)
								{
									KIND="VARIABLE"
									VALUE="1"
									OWNER_FILE="motorway/nebelbank.sc"
								}

								TYPEOF PARAMETER (VALUE_B)
								{
									KIND="USER"
									VALUE="3.6"
									OWNER_FILE=""
								}
							}
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ACCELERATION)
				{
					KIND="USER"
					VALUE="-2"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SPEAK)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Fuß vom Gas"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LANGUAGE)
				{
					KIND="ENUM"
					VALUE="GERMAN"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (7)
		{
			LABEL="Stau voraus"

			TYPEOF CONDITION (INFERIOR)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_TIME_TO_COLLISION)
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

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="6"
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
					VALUE="5"
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

		TYPEOF RULE (8)
		{
			LABEL="Durch"

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
					VALUE="4"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (3)
	{
		LABEL="Stauende"
		TASK_KIND="0"

		TYPEOF RULE (9)
		{
			LABEL="Steht"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
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
		LABEL="Auswertung"
		TASK_KIND="0"

		TYPEOF RULE (10)
		{
			LABEL="Warnung gesprochen"

			TYPEOF CONDITION (IS_VARIABLE_TRUE)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="3"
					OWNER_FILE="motorway/nebelbank.sc"
				}
			}

			TYPEOF ACTION (SPEAK)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Zu schnell für die Sicht"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LANGUAGE)
				{
					KIND="ENUM"
					VALUE="GERMAN"
					OWNER_FILE=""
				}
			}

			TYPEOF ELSE_ACTION (NOTHING)
			{
			}
		}

		TYPEOF RULE (11)
		{
			LABEL="Lichter"

			TYPEOF CONDITION (IS_VHL_LIGHT_ON)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (LIGHT)
				{
					KIND="ENUM"
					VALUE="LIGHT_FOG_REAR"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Nebelschlussleuchte war an"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SEVERITY)
				{
					KIND="ENUM"
					VALUE="INFORMATION"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (12)
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

	TYPEOF GENERAL_PARAMETERS (0)
	{
	}
}
</text>
    </ScenarioScript>
    <VariadicParameter>
      <name>Visibility</name>
      <description>Visibility before the fog</description>
      <parameterId>/sce/Scenario/Weather/visibility</parameterId>
      <parameterUnit>m</parameterUnit>
      <RealParameter>
        <default>2000</default>
        <RealRange>
          <minimum>500</minimum>
          <maximum>5000</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Sight in the fog</name>
      <description>Metres</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=1]/value</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>60</default>
        <RealRange>
          <minimum>20</minimum>
          <maximum>150</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
  </Scenario>
</sce>
