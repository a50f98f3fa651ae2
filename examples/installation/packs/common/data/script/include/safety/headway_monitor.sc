
TYPEOF INCLUDE
{
	LABEL="Headway monitor"
	TASK_KIND="0"
	FILE="safety/headway_monitor.sc"

	TYPEOF VARIABLE (911)
	{
		LABEL="Shortest headway"
		TYPE="FLOAT"
		VALUE="60"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="60"
		INTERACTIVE_STEP_VALUE="0.10000000000000001"
		CATEGORY="MONITOR"
	}

	TYPEOF RULE
	{
		LABEL="Keeps the shortest headway"

		TYPEOF CONDITION (INFERIOR)
		{

			TYPEOF PARAMETER (VALUE_A)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_TIME_HEADWAY)
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
				KIND="VARIABLE"
				VALUE="911"
				OWNER_FILE="safety/headway_monitor.sc"
			}
		}

		TYPEOF ACTION (SET_VARIABLE)
		{

			TYPEOF PARAMETER (VARIABLE_REF)
			{
				KIND="VARIABLE"
				VALUE="911"
				OWNER_FILE="safety/headway_monitor.sc"
			}

			TYPEOF PARAMETER (VALUE_B)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_TIME_HEADWAY)
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
		}
	}

	TYPEOF RULE
	{
		LABEL="Too close for two seconds"
		EVALUATION="WARNING"

		TYPEOF CONDITION (INFERIOR)
		{
			MODIFIER="HAS_BEEN_TRUE_FOR"
			DURATION="2.000000"

			TYPEOF PARAMETER (VALUE_A)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_TIME_HEADWAY)
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
				VALUE="1"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (DISPLAY_VALUE)
		{

			TYPEOF PARAMETER (MESSAGE)
			{
				KIND="USER"
				VALUE="Headway"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (INPUT_VALUE)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_TIME_HEADWAY)
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
		}
	}
}
