<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Nuit d'été sur l'autoroute</name>
    <description>Trois heures de conduite monotone; l'attention baisse. Une biche traverse.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="240"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="medium"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="29"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="night tiredness"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="clear"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="10000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="292.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="23.5"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="A 6"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="30000"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="3"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="30000"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="36.111111111"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Élève"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_estate"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="34.722222222"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="0"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="0"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="4.3"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="1250"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="7"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Biche"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="deer"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="2900"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="3"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="2900"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="1.6"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="80"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Hélène"/>
      <label ScenarioTreeValue="É1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.7"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Biche"/>
      <label ScenarioTreeValue="B"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="reckless"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0"/>
    </Driver>
    <Object>
      <name type="string" ScenarioTreeValue="barrière"/>
      <x type="real" unit="m" ScenarioTreeValue="2890"/>
      <y type="real" unit="m" ScenarioTreeValue="12"/>
    </Object>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Nuit d'été"
	FILE="night/nuit.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Fatigue"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="1"
		INTERACTIVE_STEP_VALUE="0.01"
		CATEGORY="CONDUCTEUR"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Biche"
		TYPE="BOOL"
		VALUE="1"
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
		LABEL="Fatigue"

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
				OWNER_FILE="night/nuit.sc"
			}

			TYPEOF PARAMETER (VALUE_B)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (MINIMUM)
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

						TYPEOF FUNCTION (PLUS)
						{

							TYPEOF PARAMETER (VALUE_A)
							{
								KIND="VARIABLE"
								VALUE="1"
								OWNER_FILE="night/nuit.sc"
							}

							TYPEOF PARAMETER (VALUE_B)
							{
								KIND="USER"
								VALUE="0.01"
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

	TYPEOF RULE (3)
	{
		LABEL="Inattentif"

		TYPEOF CONDITION (INFERIOR)
		{
			MODIFIER="IS_FALSE"

			TYPEOF PARAMETER (VALUE_A)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_ATTENTION)
				{

					TYPEOF PARAMETER (DRIVER_NAME)
					{
						KIND="DRIVER"
						VALUE="Hélène"
						OWNER_FILE=""
					}
				}
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (VALUE_B)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (MINUS)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="USER"
						VALUE="1"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="VARIABLE"
						VALUE="1"
						OWNER_FILE="night/nuit.sc"
					}
				}
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_DRIVER_STYLE)
		{

			TYPEOF PARAMETER (DRIVER_NAME)
			{
				KIND="DRIVER"
				VALUE="Hélène"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (DRIVER_STYLE)
			{
				KIND="ENUM"
				VALUE="STYLE_CALM"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Route"
		TASK_KIND="0"

		TYPEOF RULE (4)
		{
			LABEL="Départ"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_DAY_HOUR)
			{

				TYPEOF PARAMETER (DAY_HOUR)
				{
					KIND="USER"
					VALUE="23.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (ATTACH_DRIVER)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="0"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DRIVER_NAME)
				{
					KIND="DRIVER"
					VALUE="Hélène"
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
			LABEL="Une biche"

			TYPEOF CONDITION (AND)
			{

				TYPEOF CONDITION (IS_VARIABLE_TRUE)
				{

					TYPEOF PARAMETER (BOOL_VARIABLE_REF)
					{
						KIND="VARIABLE"
						VALUE="2"
						OWNER_FILE="night/nuit.sc"
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
								VALUE="7"
								OWNER_FILE=""
							}
						}
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
						VALUE="140"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (IS_NIGHT)
				{
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
		LABEL="Biche"
		TASK_KIND="0"

		TYPEOF RULE (6)
		{
			LABEL="Elle traverse"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (CHANGE_LANE)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="7"
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
					VALUE="2"
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
					VALUE="7.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (INIT_ANIMATION)
			{

				TYPEOF PARAMETER (ANIMATION_ID)
				{
					KIND="USER"
					VALUE="4"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_NAME)
				{
					KIND="USER"
					VALUE="run"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATION_LOOP)
				{
					KIND="ENUM"
					VALUE="YES"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATED_OBJECT_TYPE)
				{
					KIND="ENUM"
					VALUE="ANIMATED_OBJECT_TYPE_VEHICLE"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (ANIMATED_OBJECT_ID)
				{
					KIND="USER"
					VALUE="7"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (7)
		{
			LABEL="Arrêt"

			TYPEOF CONDITION (OR)
			{

				TYPEOF CONDITION (IS_VHL_STOPPED)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (SUPERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="FUNCTION"

						TYPEOF FUNCTION (GET_DISTANCE_BETWEEN)
						{

							TYPEOF PARAMETER (VHL_NUMBER)
							{
								KIND="VEHICLE"
								VALUE="7"
								OWNER_FILE=""
							}

							TYPEOF PARAMETER (OTHER_VHL_NUMBER)
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
						VALUE="50"
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
		LABEL="Fin"
		TASK_KIND="0"

		TYPEOF RULE (8)
		{
			LABEL="Fin"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SNAPSHOT)
			{

				TYPEOF PARAMETER (CHANNEL_NAME)
				{
					KIND="ENUM"
					VALUE="CHANNEL_CENTRE"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SUFFIX)
				{
					KIND="USER"
					VALUE="biche"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (9)
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

	TYPEOF GENERAL_PARAMETERS (0)
	{
	}
}
</text>
    </ScenarioScript>
    <VariadicParameter>
      <name>Heure</name>
      <description>Heure du jour</description>
      <parameterId>/sce/Scenario/Weather/hour</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>23.5</default>
        <RealRange>
          <minimum>21</minimum>
          <maximum>24</maximum>
        </RealRange>
        <RealRange>
          <minimum>0</minimum>
          <maximum>5</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Graine</name>
      <description>Suite des nombres aléatoires</description>
      <parameterId>/sce/Scenario/randomSeed</parameterId>
      <parameterUnit></parameterUnit>
      <IntegerParameter>
        <default>29</default>
        <IntegerRange>
          <minimum>0</minimum>
          <maximum>1000</maximum>
        </IntegerRange>
      </IntegerParameter>
    </VariadicParameter>
  </Scenario>
</sce>
