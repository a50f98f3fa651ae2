<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
    <name>Fahrprüfung Klasse B</name>
    <description>Abfahrtkontrolle, Stadtfahrt, Einparken. Wer hundert Punkte behält, hat bestanden.</description>
    <duration type="real" unit="s" verboseName="Duration" ScenarioTreeValue="600"/>
    <difficulty type="enumeration" verboseName="Difficulty" ScenarioTreeValue="test"/>
    <randomSeed type="integer" verboseName="Seed of the random numbers" ScenarioTreeValue="1"/>
    <startPosition type="vector" unit="m" verboseName="Start position" ScenarioTreeValue="0 1.75 0"/>
    <tags type="list" verboseName="Tags" ScenarioTreeValue="test marks"/>
    <showHints type="boolean" verboseName="Show hints" ScenarioTreeValue="true"/>
    <Weather>
      <kind type="enumeration" verboseName="Weather" ScenarioTreeValue="cloudy"/>
      <fog type="boolean" verboseName="Fog" ScenarioTreeValue="false"/>
      <visibility type="real" unit="m" verboseName="Visibility" ScenarioTreeValue="9000"/>
      <rain type="real" unit="%" verboseName="Rain" ScenarioTreeValue="0"/>
      <temperature type="real" unit="degC" verboseName="Air temperature" ScenarioTreeValue="288.15"/>
      <windSpeed type="real" unit="m/s" verboseName="Wind speed" ScenarioTreeValue="0"/>
      <friction type="real" verboseName="Grip" ScenarioTreeValue="1"/>
      <hour type="real" verboseName="Time of day, hours" ScenarioTreeValue="12"/>
    </Weather>
    <Road>
      <name type="string" verboseName="Road" ScenarioTreeValue="Prüfstrecke"/>
      <length type="real" unit="km" verboseName="Length" ScenarioTreeValue="3400"/>
      <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
      <lanes type="integer" verboseName="Lanes" ScenarioTreeValue="2"/>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="0"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1200"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="1200"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="1600"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="8.333333333"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <Stretch>
        <from type="real" unit="m" verboseName="From" ScenarioTreeValue="1600"/>
        <to type="real" unit="m" verboseName="To" ScenarioTreeValue="3400"/>
        <speedLimit type="real" unit="km/h" verboseName="Speed limit" ScenarioTreeValue="13.888888889"/>
        <surface type="enumeration" verboseName="Surface" ScenarioTreeValue="asphalt"/>
        <gradient type="real" unit="%" verboseName="Gradient" ScenarioTreeValue="0"/>
      </Stretch>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="800"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="red"/>
      </TrafficLight>
      <TrafficLight>
        <number type="integer" ScenarioTreeValue="1"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="2100"/>
        <colour type="enumeration" verboseName="Colour" ScenarioTreeValue="green"/>
      </TrafficLight>
      <RoadSign>
        <number type="integer" ScenarioTreeValue="0"/>
        <position type="real" unit="m" verboseName="Position" ScenarioTreeValue="1200"/>
        <text type="string" verboseName="Text" ScenarioTreeValue="30"/>
      </RoadSign>
    </Road>
    <Vehicle>
      <id ScenarioTreeValue="0"/>
      <driverId ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Prüfling"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="car_small"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="0"/>
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
      <Input>
        <name type="string" ScenarioTreeValue="brake"/>
      </Input>
      <Input>
        <name type="string" ScenarioTreeValue="steering"/>
      </Input>
      <Output>
        <name type="string" ScenarioTreeValue="speed"/>
      </Output>
      <Output>
        <name type="string" ScenarioTreeValue="engineSpeed"/>
      </Output>
      <Output>
        <name type="string" ScenarioTreeValue="fuel"/>
      </Output>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="1"/>
      <driverId ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Bus"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="bus_city"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="8.888888889"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="150"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="150"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="12"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="13500"/>
    </Vehicle>
    <Vehicle>
      <id ScenarioTreeValue="2"/>
      <driverId ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Fahrrad"/>
      <model type="string" verboseName="Model" ScenarioTreeValue="bicycle"/>
      <initialSpeed type="real" unit="km/h" verboseName="Initial speed" ScenarioTreeValue="4.166666667"/>
      <roadPosition type="real" unit="m" verboseName="Position along the road" ScenarioTreeValue="1300"/>
      <lane type="integer" verboseName="Lane" ScenarioTreeValue="1"/>
      <x type="real" unit="m" verboseName="X" ScenarioTreeValue="1300"/>
      <y type="real" unit="m" verboseName="Y" ScenarioTreeValue="0"/>
      <heading type="real" unit="deg" verboseName="Heading" ScenarioTreeValue="0"/>
      <length type="real" unit="m" verboseName="Length" ScenarioTreeValue="1.8"/>
      <mass type="integer" unit="kg" verboseName="Mass" ScenarioTreeValue="90"/>
    </Vehicle>
    <Driver>
      <id ScenarioTreeValue="1"/>
      <name ScenarioTreeValue="Прохор"/>
      <label ScenarioTreeValue="P1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="normal"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="1"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="2"/>
      <name ScenarioTreeValue="Busfahrerin"/>
      <label ScenarioTreeValue="B1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="calm"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.9"/>
    </Driver>
    <Driver>
      <id ScenarioTreeValue="3"/>
      <name ScenarioTreeValue="Kind"/>
      <label ScenarioTreeValue="K1"/>
      <style type="enumeration" verboseName="Style of driving" ScenarioTreeValue="reckless"/>
      <attention type="real" unit="%" verboseName="Attention" ScenarioTreeValue="0.2"/>
    </Driver>
    <Image>
      <name type="string" verboseName="Image" ScenarioTreeValue="examiner"/>
    </Image>
    <Sound>
      <name type="string" verboseName="Sound" ScenarioTreeValue="gong"/>
    </Sound>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="start"/>
    </Trigger>
    <Trigger>
      <name type="string" verboseName="Trigger" ScenarioTreeValue="child"/>
    </Trigger>
    <Object>
      <name type="string" ScenarioTreeValue="ball"/>
      <x type="real" unit="m" ScenarioTreeValue="1320"/>
      <y type="real" unit="m" ScenarioTreeValue="3"/>
    </Object>
    <ScenarioScript>
      <scriptName>main</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Fahrprüfung"
	FILE="tests/fahrpruefung.sc"
	TASK_KIND="0"

	TYPEOF INCLUDE (1)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="speed_monitor.sc"
	}

	TYPEOF INCLUDE (2)
	{
		ISA_INDEX="1"
		TASK_KIND="0"
		FILE="school/instructor keys.sc"
	}

	TYPEOF VARIABLE (1)
	{
		LABEL="Punkte am Anfang"
		TYPE="FLOAT"
		VALUE="120"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="1"
		INTERACTIVE_MIN_VALUE="100"
		INTERACTIVE_MAX_VALUE="150"
		INTERACTIVE_STEP_VALUE="5"
		CATEGORY="PRÜFUNG"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Fehler"
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
		LABEL="Name"
		TYPE="STRING"
		VALUE="Muster"
		INTERACTIVE_TYPE="STRING"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="PRÜFUNG"
	}

	TYPEOF VARIABLE (4)
	{
		LABEL="Versuch"
		TYPE="INTEGER"
		VALUE="1"
		INTERACTIVE_TYPE="INTEGER"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1"
		INTERACTIVE_MAX_VALUE="3"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="PRÜFUNG"
	}

	TYPEOF VARIABLE (5)
	{
		LABEL="Angeschnallt"
		TYPE="BOOL"
		VALUE="0"
		INTERACTIVE_TYPE="BOOL"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="PRÜFUNG"
	}

	TYPEOF VARIABLE (6)
	{
		LABEL="Ergebnis"
		TYPE="STRING"
		VALUE="offen"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF RULE (1)
	{
		LABEL="Zeit ist um"

		TYPEOF CONDITION (IS_TIME_AFTER)
		{

			TYPEOF PARAMETER (SCENARIO_TIME)
			{
				KIND="USER"
				VALUE="600"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_STATE)
		{

			TYPEOF PARAMETER (STATE)
			{
				KIND="TASK"
				VALUE="4"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF RULE (2)
	{
		LABEL="Unfall"
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

		TYPEOF ACTION (SET_STATE)
		{

			TYPEOF PARAMETER (STATE)
			{
				KIND="TASK"
				VALUE="4"
				OWNER_FILE=""
			}
		}
	}

	TYPEOF TASK (1)
	{
		LABEL="Abfahrtkontrolle"
		TASK_KIND="0"

		TYPEOF RULE (3)
		{
			LABEL="Prüfer steigt ein"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_IMAGE)
			{

				TYPEOF PARAMETER (IMAGE_NAME)
				{
					KIND="IMAGE"
					VALUE="examiner"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (CHANNEL_NAME)
				{
					KIND="ENUM"
					VALUE="CHANNEL_RIGHT"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_X)
				{
					KIND="USER"
					VALUE="0.7"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_Y)
				{
					KIND="USER"
					VALUE="0.2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_WIDTH)
				{
					KIND="USER"
					VALUE="0.3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_HEIGHT)
				{
					KIND="USER"
					VALUE="0.6"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISPLAY_TIME)
				{
					KIND="USER"
					VALUE="5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_EXPORTED_CHANNEL)
			{

				TYPEOF PARAMETER (CHANNEL_ID)
				{
					KIND="EXPORT_CHANNEL"
					VALUE="3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (INPUT_VALUE)
				{
					KIND="VARIABLE"
					VALUE="1"
					OWNER_FILE="tests/fahrpruefung.sc"
				}
			}

			TYPEOF ACTION (SET_SPEED_LIMIT)
			{

				TYPEOF PARAMETER (SPEED)
				{
					KIND="ENUM"
					VALUE="SPEED_TOWN"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VHL_SPEED)
			{

				TYPEOF PARAMETER (VHL_NUMBER)
				{
					KIND="VEHICLE"
					VALUE="2"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SPEED)
				{
					KIND="USER"
					VALUE="4.167"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (4)
		{
			LABEL="Gurt"

			TYPEOF CONDITION (IS_SWITCH_ON)
			{

				TYPEOF PARAMETER (SWITCH)
				{
					KIND="ENUM"
					VALUE="SWITCH_SEAT_BELT"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_FLAG)
			{

				TYPEOF PARAMETER (BOOL_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="5"
					OWNER_FILE="tests/fahrpruefung.sc"
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
			LABEL="Bereit"

			TYPEOF CONDITION (OR)
			{

				TYPEOF CONDITION (IS_VARIABLE_TRUE)
				{

					TYPEOF PARAMETER (BOOL_VARIABLE_REF)
					{
						KIND="VARIABLE"
						VALUE="5"
						OWNER_FILE="tests/fahrpruefung.sc"
					}
				}

				TYPEOF CONDITION (WAIT)
				{

					TYPEOF PARAMETER (DELAY)
					{
						KIND="USER"
						VALUE="6"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF ACTION (PLAY_SOUND)
			{

				TYPEOF PARAMETER (SOUND_NAME)
				{
					KIND="SOUND"
					VALUE="gong"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VOLUME)
				{
					KIND="USER"
					VALUE="0.6"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (FIRE_TRIGGER)
			{

				TYPEOF PARAMETER (TRIGGER_NAME)
				{
					KIND="TRIGGER"
					VALUE="start"
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
		LABEL="Stadtfahrt"
		TASK_KIND="0"

		TYPEOF RULE (6)
		{
			LABEL="Am Ende der Strecke"

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
					VALUE="2900"
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

		TYPEOF TASK (21)
		{
			LABEL="Anfahren"
			TASK_KIND="0"

			TYPEOF RULE (7)
			{
				LABEL="Erster Gang"

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
						VALUE="13.333"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (ACCELERATION)
					{
						KIND="USER"
						VALUE="1.8"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (8)
			{
				LABEL="Schalten"

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
						VALUE="5"
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
			}

			TYPEOF RULE (9)
			{
				LABEL="Bus voraus"

				TYPEOF CONDITION (IS_VHL_CLOSER)
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

					TYPEOF PARAMETER (DISTANCE)
					{
						KIND="USER"
						VALUE="60"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (NEXT_STATE)
				{

					TYPEOF PARAMETER (STATE)
					{
						KIND="TASK"
						VALUE="22"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (10)
			{
				LABEL="Ampel voraus"

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
						VALUE="730"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (NEXT_STATE)
				{

					TYPEOF PARAMETER (STATE)
					{
						KIND="TASK"
						VALUE="23"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF TASK (22)
		{
			LABEL="Hinter dem Bus"
			TASK_KIND="0"

			TYPEOF RULE (11)
			{
				LABEL="Abstand"

				TYPEOF CONDITION (ALWAYS)
				{
					MODIFIER="BECOMES_TRUE"
				}

				TYPEOF ACTION (FOLLOW_VHL)
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

					TYPEOF PARAMETER (HEADWAY)
					{
						KIND="USER"
						VALUE="2"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (12)
			{
				LABEL="Ampel voraus"

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
						VALUE="730"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (NEXT_STATE)
				{

					TYPEOF PARAMETER (STATE)
					{
						KIND="TASK"
						VALUE="23"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF TASK (23)
		{
			LABEL="Ampel"
			TASK_KIND="0"

			TYPEOF RULE (13)
			{
				LABEL="Rot"

				TYPEOF CONDITION (ALWAYS)
				{
					MODIFIER="BECOMES_TRUE"
				}

				TYPEOF ACTION (SET_TRAFFIC_LIGHT)
				{

					TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
					{
						KIND="TRAFFIC_LIGHT"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (LIGHT_COLOUR)
					{
						KIND="ENUM"
						VALUE="COLOUR_RED"
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
						VALUE="2.5"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (BRAKE)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="1"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (DECELERATION)
					{
						KIND="USER"
						VALUE="2"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (14)
			{
				LABEL="Steht lange genug"

				TYPEOF CONDITION (AND)
				{

					TYPEOF CONDITION (IS_VHL_STOPPED)
					{
						MODIFIER="HAS_BEEN_TRUE_FOR"
						DURATION="2.000000"

						TYPEOF PARAMETER (VHL_NUMBER)
						{
							KIND="VEHICLE"
							VALUE="0"
							OWNER_FILE=""
						}
					}

					TYPEOF CONDITION (IS_TRAFFIC_LIGHT)
					{

						TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
						{
							KIND="TRAFFIC_LIGHT"
							VALUE="0"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (LIGHT_COLOUR)
						{
							KIND="ENUM"
							VALUE="COLOUR_RED"
							OWNER_FILE=""
						}
					}
				}

				TYPEOF ACTION (SET_TRAFFIC_LIGHT)
				{

					TYPEOF PARAMETER (TRAFFIC_LIGHT_NUMBER)
					{
						KIND="TRAFFIC_LIGHT"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (LIGHT_COLOUR)
					{
						KIND="ENUM"
						VALUE="COLOUR_GREEN"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (NEXT_STATE)
				{

					TYPEOF PARAMETER (STATE)
					{
						KIND="TASK"
						VALUE="24"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF TASK (24)
		{
			LABEL="Zone 30"
			TASK_KIND="0"

			TYPEOF RULE (15)
			{
				LABEL="Weiter"

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
						KIND="ENUM"
						VALUE="SPEED_TOWN"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (ACCELERATION)
					{
						KIND="USER"
						VALUE="1.5"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (REMOVE_VHL)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="1"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (16)
			{
				LABEL="Schild"

				TYPEOF CONDITION (HAS_PASSED_SIGN)
				{
					MODIFIER="BECOMES_TRUE"

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (ROADSIGN_NUMBER)
					{
						KIND="ROADSIGN"
						VALUE="0"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (SET_SPEED_LIMIT)
				{

					TYPEOF PARAMETER (SPEED)
					{
						KIND="ENUM"
						VALUE="SPEED_ZONE_30"
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
						KIND="ENUM"
						VALUE="SPEED_ZONE_30"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (ACCELERATION)
					{
						KIND="USER"
						VALUE="-2"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (17)
			{
				LABEL="Ball auf der Straße"

				TYPEOF CONDITION (IS_OBJECT_NEAR)
				{
					MODIFIER="BECOMES_TRUE"

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (OBJECT_REFERENCE)
					{
						KIND="OBJECT"
						VALUE="ball#0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (DISTANCE)
					{
						KIND="USER"
						VALUE="40"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (FIRE_TRIGGER)
				{

					TYPEOF PARAMETER (TRIGGER_NAME)
					{
						KIND="TRIGGER"
						VALUE="child"
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
						VALUE="6"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (18)
			{
				LABEL="Weiter"

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

				TYPEOF ACTION (REMOVE_VHL)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="2"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (SET_SPEED_LIMIT)
				{

					TYPEOF PARAMETER (SPEED)
					{
						KIND="ENUM"
						VALUE="SPEED_TOWN"
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
						VALUE="13.333"
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
		}
	}

	TYPEOF TASK (3)
	{
		LABEL="Einparken"
		TASK_KIND="0"

		TYPEOF RULE (19)
		{
			LABEL="Rückwärtsgang"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
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

		TYPEOF RULE (20)
		{
			LABEL="Rückwärts"

			TYPEOF CONDITION (IS_VHL_STOPPED)
			{
				MODIFIER="BECOMES_TRUE"

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

			TYPEOF ACTION (SHOW_MAP)
			{

				TYPEOF PARAMETER (MAP_FILE)
				{
					KIND="FILE"
					VALUE="junction.txt"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISPLAY_TIME)
				{
					KIND="USER"
					VALUE="10"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (21)
		{
			LABEL="Fertig"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="25"
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
		LABEL="Ergebnis"
		TASK_KIND="0"

		TYPEOF RULE (22)
		{
			LABEL="Fehler zählen"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="2"
					OWNER_FILE="tests/fahrpruefung.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_ERROR_COUNT)
					{
					}
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (23)
		{
			LABEL="Bestanden"

			TYPEOF CONDITION (SUPEQUAL)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_SCORE)
					{

						TYPEOF PARAMETER (SCORE_NUMBER)
						{
							KIND="USER"
							VALUE="0"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="100"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_TEXT_VARIABLE)
			{

				TYPEOF PARAMETER (TEXT_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="6"
					OWNER_FILE="tests/fahrpruefung.sc"
				}

				TYPEOF PARAMETER (TEXT_B)
				{
					KIND="USER"
					VALUE="bestanden"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_IMAGE)
			{

				TYPEOF PARAMETER (IMAGE_NAME)
				{
					KIND="FILE"
					VALUE="passed.png"
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
					VALUE="0.3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_Y)
				{
					KIND="USER"
					VALUE="0.3"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_WIDTH)
				{
					KIND="USER"
					VALUE="0.4"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (IMAGE_HEIGHT)
				{
					KIND="USER"
					VALUE="0.4"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (DISPLAY_TIME)
				{
					KIND="USER"
					VALUE="8"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SPEAK)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Bestanden"
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

		TYPEOF RULE (24)
		{
			LABEL="Nicht bestanden"

			TYPEOF CONDITION (INFERIOR)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_SCORE)
					{

						TYPEOF PARAMETER (SCORE_NUMBER)
						{
							KIND="USER"
							VALUE="0"
							OWNER_FILE=""
						}
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="100"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_TEXT_VARIABLE)
			{

				TYPEOF PARAMETER (TEXT_VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="6"
					OWNER_FILE="tests/fahrpruefung.sc"
				}

				TYPEOF PARAMETER (TEXT_B)
				{
					KIND="USER"
					VALUE="nicht bestanden"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (25)
		{
			LABEL="Ende"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="10"
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
		LABEL="Bewertung"
		TASK_KIND="0"
		SCORE="0 120.000000"
		SCORE="1 0.000000"
		SCORE="2 0.000000"
		SCORE="3 0.000000"

		TYPEOF VARIABLE (70)
		{
			LABEL="Sekunden zu schnell"
			TYPE="FLOAT"
			VALUE="0"
			INTERACTIVE_TYPE="VOID"
			IS_INITIALIZATION_NEEDED_AT_START="0"
			INTERACTIVE_MIN_VALUE="0"
			INTERACTIVE_MAX_VALUE="9999"
			INTERACTIVE_STEP_VALUE="1"
			CATEGORY="INTERNAL"
		}

		TYPEOF RULE (26)
		{
			LABEL="Durchgefallen"

			TYPEOF CONDITION (INFERIOR)
			{
				MODIFIER="BECOMES_TRUE"

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_SCORE)
					{

						TYPEOF PARAMETER (SCORE_NUMBER)
						{
							KIND="USER"
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

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Durchgefallen"
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (SEVERITY)
				{
					KIND="ENUM"
					VALUE="ERROR"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF CRITERIA (1)
		{
			LABEL="Geschwindigkeit"
			TASK_KIND="0"
			CATEGORY="Geschwindigkeit"
			CRITICITY="3"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT="Zu schnell gefahren"
			SOUND="warning.wav"

			TYPEOF RULE (27)
			{
				LABEL="Über 55"
				EVALUATION="WARNING"

				TYPEOF CONDITION (EVALUATION_SPEED_ABOVE)
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
						VALUE="15.278"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_ERROR)
				{

					TYPEOF PARAMETER (LEVEL)
					{
						KIND="ENUM"
						VALUE="LEVEL_SLIGHT"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Zu schnell"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_POINTS)
				{

					TYPEOF PARAMETER (SCORE_NUMBER)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (POINTS)
					{
						KIND="USER"
						VALUE="-5"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (ADD_TO_VARIABLE)
				{

					TYPEOF PARAMETER (VARIABLE_REF)
					{
						KIND="VARIABLE"
						VALUE="70"
						OWNER_FILE="tests/fahrpruefung.sc"
					}

					TYPEOF PARAMETER (VALUE_B)
					{
						KIND="USER"
						VALUE="1"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF RULE (28)
			{
				LABEL="Über 70"
				EVALUATION="ERROR"

				TYPEOF CONDITION (EVALUATION_SPEED_ABOVE)
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
						VALUE="19.444"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_ERROR)
				{

					TYPEOF PARAMETER (LEVEL)
					{
						KIND="ENUM"
						VALUE="LEVEL_SERIOUS"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Viel zu schnell"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_POINTS)
				{

					TYPEOF PARAMETER (SCORE_NUMBER)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (POINTS)
					{
						KIND="USER"
						VALUE="-30"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF CRITERIA (2)
		{
			LABEL="Abstand"
			TASK_KIND="0"
			CATEGORY="Abstand"
			CRITICITY="3"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT="Zu dicht aufgefahren"
			SOUND=""

			TYPEOF RULE (29)
			{
				LABEL="Unter einer Sekunde"
				EVALUATION="WARNING"

				TYPEOF CONDITION (EVALUATION_HEADWAY_BELOW)
				{
					MODIFIER="HAS_BEEN_TRUE_FOR"
					DURATION="2.000000"

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

					TYPEOF PARAMETER (HEADWAY)
					{
						KIND="USER"
						VALUE="1"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_REMARK)
				{

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Zu dicht"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF CRITERIA (7)
		{
			LABEL="Zone 30"
			TASK_KIND="0"
			CATEGORY="Geschwindigkeit"
			CRITICITY="3"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT="Zu schnell in der Zone"
			SOUND="warning.wav"

			TYPEOF TASK (81)
			{
				LABEL="Vor der Zone"
				TASK_KIND="0"

				TYPEOF RULE (30)
				{
					LABEL="Schild"

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
							VALUE="1225"
							OWNER_FILE=""
						}
					}

					TYPEOF ACTION (NEXT_STATE)
					{

						TYPEOF PARAMETER (STATE)
						{
							KIND="TASK"
							VALUE="82"
							OWNER_FILE=""
						}
					}
				}
			}

			TYPEOF TASK (82)
			{
				LABEL="In der Zone"
				TASK_KIND="0"

				TYPEOF RULE (31)
				{
					LABEL="Über 33"
					EVALUATION="WARNING"

					TYPEOF CONDITION (EVALUATION_SPEED_ABOVE)
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
							VALUE="9.167"
							OWNER_FILE=""
						}
					}

					TYPEOF ACTION (EVALUATION_ADD_ERROR)
					{

						TYPEOF PARAMETER (LEVEL)
						{
							KIND="ENUM"
							VALUE="LEVEL_SLIGHT"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (COMMENT)
						{
							KIND="USER"
							VALUE="Zu schnell in der Zone"
							OWNER_FILE=""
						}
					}

					TYPEOF ACTION (EVALUATION_ADD_POINTS)
					{

						TYPEOF PARAMETER (SCORE_NUMBER)
						{
							KIND="USER"
							VALUE="0"
							OWNER_FILE=""
						}

						TYPEOF PARAMETER (POINTS)
						{
							KIND="USER"
							VALUE="-5"
							OWNER_FILE=""
						}
					}
				}

				TYPEOF RULE (32)
				{
					LABEL="Ende der Zone"

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
							VALUE="1600"
							OWNER_FILE=""
						}
					}

					TYPEOF ACTION (NEXT_STATE)
					{

						TYPEOF PARAMETER (STATE)
						{
							KIND="TASK"
							VALUE="83"
							OWNER_FILE=""
						}
					}
				}
			}

			TYPEOF TASK (83)
			{
				LABEL="Hinter der Zone"
				TASK_KIND="0"
			}
		}

		TYPEOF CRITERIA (3)
		{
			LABEL="Fahrstreifen"
			TASK_KIND="0"
			CATEGORY="Spur"
			CRITICITY="2"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT="Fahrstreifen verlassen"
			SOUND=""

			TYPEOF RULE (33)
			{
				LABEL="Links"

				TYPEOF CONDITION (EVALUATION_OFF_LANE)
				{
					MODIFIER="BECOMES_TRUE"

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (LANE)
					{
						KIND="ENUM"
						VALUE="LANE_RIGHT"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_ERROR)
				{

					TYPEOF PARAMETER (LEVEL)
					{
						KIND="ENUM"
						VALUE="LEVEL_SLIGHT"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Fahrstreifen"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_POINTS)
				{

					TYPEOF PARAMETER (SCORE_NUMBER)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (POINTS)
					{
						KIND="USER"
						VALUE="-10"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF CRITERIA (4)
		{
			LABEL="Unfall"
			TASK_KIND="0"
			CATEGORY="Sicherheit"
			CRITICITY="9"
			ATTRIBUTE_CRITERIA_TYPE="Error"
			TEXT="Unfall"
			SOUND="crash.wav"

			TYPEOF RULE (34)
			{
				LABEL="Berührt"
				EVALUATION="ERROR"

				TYPEOF CONDITION (EVALUATION_COLLISION)
				{
					MODIFIER="BECOMES_TRUE"

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_ERROR)
				{

					TYPEOF PARAMETER (LEVEL)
					{
						KIND="ENUM"
						VALUE="LEVEL_FAILED"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Unfall"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_ADD_POINTS)
				{

					TYPEOF PARAMETER (SCORE_NUMBER)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (POINTS)
					{
						KIND="USER"
						VALUE="-200"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF CRITERIA (6)
		{
			LABEL="Punkte"
			TASK_KIND="0"
			CATEGORY="Ergebnis"
			CRITICITY="1"
			ATTRIBUTE_CRITERIA_TYPE="Warning"
			TEXT="Wenige Punkte"
			SOUND=""

			TYPEOF RULE (35)
			{
				LABEL="Unter 50"

				TYPEOF CONDITION (EVALUATION_SCORE_BELOW)
				{
					MODIFIER="BECOMES_TRUE"

					TYPEOF PARAMETER (SCORE_NUMBER)
					{
						KIND="USER"
						VALUE="0"
						OWNER_FILE=""
					}

					TYPEOF PARAMETER (POINTS)
					{
						KIND="USER"
						VALUE="50"
						OWNER_FILE=""
					}
				}

				TYPEOF ACTION (EVALUATION_REMARK)
				{

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Weniger als fünfzig Punkte"
						OWNER_FILE=""
					}
				}
			}
		}

		TYPEOF CRITERIA (5)
		{
			LABEL="Gurt"
			TASK_KIND="0"
			IS_DISABLED="1"
			CATEGORY="Sicherheit"
			CRITICITY="4"
			ATTRIBUTE_CRITERIA_TYPE="Warning"
			TEXT="Nicht angeschnallt"
			SOUND="chime.wav"

			TYPEOF RULE (36)
			{
				LABEL="Ohne Gurt"

				TYPEOF CONDITION (INFERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="FUNCTION"

						TYPEOF FUNCTION (GET_SCORE)
						{

							TYPEOF PARAMETER (SCORE_NUMBER)
							{
								KIND="USER"
								VALUE="1"
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

				TYPEOF ACTION (EVALUATION_REMARK)
				{

					TYPEOF PARAMETER (COMMENT)
					{
						KIND="USER"
						VALUE="Gurt"
						OWNER_FILE=""
					}
				}
			}
		}
	}

	TYPEOF GENERAL_PARAMETERS (0)
	{
	}
}
</text>
    </ScenarioScript>
    <ScenarioScript>
      <scriptName>report</scriptName>
      <scriptType>nuro</scriptType>
      <text>
TYPEOF SCENARIO (1)
{
	LABEL="Bericht"
	FILE="tests/bericht.sc"
	TASK_KIND="0"

	TYPEOF VARIABLE (1)
	{
		LABEL="Titel"
		TYPE="STRING"
		VALUE="Prüfungsbericht"
		INTERACTIVE_TYPE="STRING"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="BERICHT"
	}

	TYPEOF VARIABLE (2)
	{
		LABEL="Seiten"
		TYPE="INTEGER"
		VALUE="2"
		INTERACTIVE_TYPE="INTEGER"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="1"
		INTERACTIVE_MAX_VALUE="20"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="BERICHT"
	}

	TYPEOF RULE (1)
	{
		LABEL="Notiz"

		TYPEOF CONDITION (EVERY)
		{

			TYPEOF PARAMETER (PERIOD)
			{
				KIND="USER"
				VALUE="60"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (RUN_PYTHON)
		{

			TYPEOF PARAMETER (PYTHON_FILE)
			{
				KIND="FILE"
				VALUE="note.py"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (PYTHON_ARGUMENT)
			{
				KIND="VARIABLE"
				VALUE="1"
				OWNER_FILE="tests/bericht.sc"
			}
		}
	}
}
</text>
    </ScenarioScript>
    <VariadicParameter>
      <name>Duration</name>
      <description>Length of the test</description>
      <parameterId>/sce/Scenario/duration</parameterId>
      <parameterUnit>s</parameterUnit>
      <RealParameter>
        <default>600</default>
        <RealRange>
          <minimum>300</minimum>
          <maximum>1800</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Bus</name>
      <description>Speed of the bus</description>
      <parameterId>/sce/Scenario/Vehicle[id/@ScenarioTreeValue=1]/initialSpeed</parameterId>
      <parameterUnit>km/h</parameterUnit>
      <RealParameter>
        <default>32</default>
        <RealRange>
          <minimum>20</minimum>
          <maximum>50</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Punkte</name>
      <description>Punkte am Anfang</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=1]/value</parameterId>
      <parameterUnit></parameterUnit>
      <RealParameter>
        <default>120</default>
        <RealRange>
          <minimum>100</minimum>
          <maximum>150</maximum>
        </RealRange>
      </RealParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Name</name>
      <description>Name des Prüflings</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=3]/value</parameterId>
      <parameterUnit></parameterUnit>
      <LiteralParameter>
        <default>Muster</default>
        <LiteralRange>
          <literal>Muster</literal>
        </LiteralRange>
        <LiteralRange>
          <literal>Beispiel</literal>
        </LiteralRange>
      </LiteralParameter>
    </VariadicParameter>
    <VariadicParameter>
      <name>Versuch</name>
      <description>Wievielter Versuch</description>
      <parameterId>/sce/Scenario/ScenarioScript[scriptName="main"]/Variable[name=4]/value</parameterId>
      <parameterUnit></parameterUnit>
      <IntegerParameter>
        <default>1</default>
        <IntegerRange>
          <minimum>1</minimum>
          <maximum>3</maximum>
        </IntegerRange>
      </IntegerParameter>
    </VariadicParameter>
  </Scenario>
</sce>
