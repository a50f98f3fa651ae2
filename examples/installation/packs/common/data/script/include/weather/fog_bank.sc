
TYPEOF INCLUDE (1)
{
	LABEL="Fog bank"
	TASK_KIND="0"
	FILE="weather/fog_bank.sc"

	TYPEOF VARIABLE (921)
	{
		LABEL="Sight before the fog"
		TYPE="FLOAT"
		VALUE="2000"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="100"
		INTERACTIVE_MAX_VALUE="20000"
		INTERACTIVE_STEP_VALUE="100"
		CATEGORY="WEATHER"
	}

	TYPEOF VARIABLE (922)
	{
		LABEL="Sight in the fog"
		TYPE="FLOAT"
		VALUE="60"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="10"
		INTERACTIVE_MAX_VALUE="500"
		INTERACTIVE_STEP_VALUE="5"
		CATEGORY="WEATHER"
	}

	TYPEOF TASK (51)
	{
		LABEL="Clear"
		TASK_KIND="0"

		TYPEOF RULE (921)
		{
			LABEL="Clear sight"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_WEATHER)
			{

				TYPEOF PARAMETER (WEATHER)
				{
					KIND="ENUM"
					VALUE="WEATHER_CLOUDY"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VISIBILITY)
			{

				TYPEOF PARAMETER (VISIBILITY)
				{
					KIND="VARIABLE"
					VALUE="921"
					OWNER_FILE="weather/fog_bank.sc"
				}

				TYPEOF PARAMETER (CHANGE_TIME)
				{
					KIND="USER"
					VALUE="0"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (922)
		{
			LABEL="Fog comes"

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
					VALUE="600"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="52"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (52)
	{
		LABEL="Fog closes in"
		TASK_KIND="0"

		TYPEOF RULE (923)
		{
			LABEL="Less and less sight"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_WEATHER)
			{

				TYPEOF PARAMETER (WEATHER)
				{
					KIND="ENUM"
					VALUE="WEATHER_FOG"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (SET_VISIBILITY)
			{

				TYPEOF PARAMETER (VISIBILITY)
				{
					KIND="VARIABLE"
					VALUE="922"
					OWNER_FILE="weather/fog_bank.sc"
				}

				TYPEOF PARAMETER (CHANGE_TIME)
				{
					KIND="USER"
					VALUE="20"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (LOG_MESSAGE)
			{

				TYPEOF PARAMETER (MESSAGE)
				{
					KIND="USER"
					VALUE="Fog"
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

		TYPEOF RULE (924)
		{
			LABEL="Thick"

			TYPEOF CONDITION (WAIT)
			{

				TYPEOF PARAMETER (DELAY)
				{
					KIND="USER"
					VALUE="20"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="53"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (53)
	{
		LABEL="Thick fog"
		TASK_KIND="0"

		TYPEOF RULE (925)
		{
			LABEL="Behind the bank"

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
					VALUE="3200"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="54"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (54)
	{
		LABEL="Fog lifts"
		TASK_KIND="0"

		TYPEOF RULE (926)
		{
			LABEL="More sight"

			TYPEOF CONDITION (ALWAYS)
			{
				MODIFIER="BECOMES_TRUE"
			}

			TYPEOF ACTION (SET_VISIBILITY)
			{

				TYPEOF PARAMETER (VISIBILITY)
				{
					KIND="VARIABLE"
					VALUE="921"
					OWNER_FILE="weather/fog_bank.sc"
				}

				TYPEOF PARAMETER (CHANGE_TIME)
				{
					KIND="USER"
					VALUE="15"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (927)
		{
			LABEL="Gone"

			TYPEOF CONDITION (SUPEQUAL)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_VISIBILITY)
					{
					}
					OWNER_FILE=""
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="VARIABLE"
					VALUE="921"
					OWNER_FILE="weather/fog_bank.sc"
				}
			}

			TYPEOF ACTION (SET_WEATHER)
			{

				TYPEOF PARAMETER (WEATHER)
				{
					KIND="ENUM"
					VALUE="WEATHER_CLEAR"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (END_TASK)
			{
			}
		}
	}
}
