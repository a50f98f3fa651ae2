
TYPEOF INCLUDE (1)
{
	LABEL="Fußgänger"
	TASK_KIND="0"
	FILE="school/Fußgänger.sc"

	TYPEOF VARIABLE (941)
	{
		LABEL="Schritte"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="VOID"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="9999"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="INTERNAL"
	}

	TYPEOF VARIABLE (942)
	{
		LABEL="Gewartet"
		TYPE="FLOAT"
		VALUE="0"
		INTERACTIVE_TYPE="FLOAT"
		IS_INITIALIZATION_NEEDED_AT_START="0"
		INTERACTIVE_MIN_VALUE="0"
		INTERACTIVE_MAX_VALUE="30"
		INTERACTIVE_STEP_VALUE="1"
		CATEGORY="FUSSGÄNGER"
	}

	TYPEOF TASK (61)
	{
		LABEL="Wartet am Rand"
		TASK_KIND="0"

		TYPEOF RULE (941)
		{
			LABEL="Lücke"

			TYPEOF CONDITION (OR)
			{

				TYPEOF CONDITION (SUPERIOR)
				{

					TYPEOF PARAMETER (VALUE_A)
					{
						KIND="FUNCTION"

						TYPEOF FUNCTION (GET_VHL_X)
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
						VALUE="320"
						OWNER_FILE=""
					}
				}

				TYPEOF CONDITION (IS_VHL_STOPPED)
				{

					TYPEOF PARAMETER (VHL_NUMBER)
					{
						KIND="VEHICLE"
						VALUE="0"
						OWNER_FILE=""
					}
				}
			}

			TYPEOF ACTION (SET_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="942"
					OWNER_FILE="school/Fußgänger.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="FUNCTION"

					TYPEOF FUNCTION (GET_STATE_TIME)
					{
					}
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (NEXT_STATE)
			{

				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="62"
					OWNER_FILE=""
				}
			}
		}
	}

	TYPEOF TASK (62)
	{
		LABEL="Geht hinüber"
		TASK_KIND="0"

		TYPEOF RULE (942)
		{
			LABEL="Schritt"

			TYPEOF CONDITION (EVERY)
			{

				TYPEOF PARAMETER (PERIOD)
				{
					KIND="USER"
					VALUE="0.5"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (ADD_TO_VARIABLE)
			{

				TYPEOF PARAMETER (VARIABLE_REF)
				{
					KIND="VARIABLE"
					VALUE="941"
					OWNER_FILE="school/Fußgänger.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="1"
					OWNER_FILE=""
				}
			}
		}

		TYPEOF RULE (943)
		{
			LABEL="Drüben"

			TYPEOF CONDITION (SUPEQUAL)
			{

				TYPEOF PARAMETER (VALUE_A)
				{
					KIND="VARIABLE"
					VALUE="941"
					OWNER_FILE="school/Fußgänger.sc"
				}

				TYPEOF PARAMETER (VALUE_B)
				{
					KIND="USER"
					VALUE="12"
					OWNER_FILE=""
				}
			}

			TYPEOF ACTION (END_PARENT_TASK)
			{
			}
		}
	}
}
