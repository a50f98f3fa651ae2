
TYPEOF INCLUDE (1)
{
	LABEL="Pause at the end"
	TASK_KIND="0"
	FILE="alt/pause.sc"

	TYPEOF RULE (901)
	{
		LABEL="Two minutes"

		TYPEOF CONDITION (IS_TIME_AFTER)
		{

			TYPEOF PARAMETER (SCENARIO_TIME)
			{
				KIND="USER"
				VALUE="120"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (STOP_SCENARIO)
		{
		}
	}
}
