TYPEOF INCLUDE (1)
{
	LABEL="Example"
	TASK_KIND="0"
	TYPEOF TASK (1)
	{
		LABEL="State 1"
		TASK_KIND="0"
		TYPEOF RULE (1)
		{
			LABEL="Rule 1"
			TYPEOF CONDITION (IS_MOVING)
			{
				TYPEOF PARAMETER (VEHICLE)
				{
					KIND="VEHICLE"
					VALUE="0"
				}
			}
			TYPEOF ACTION (STOP)
			{
			}
		}
	}
	TYPEOF TASK (2)
	{
		LABEL="State 2"
		TASK_KIND="0"
		TYPEOF RULE (2)
		{
			LABEL="Rule 2"
			TYPEOF CONDITION (IS_MOVING)
			{
				TYPEOF PARAMETER (VEHICLE)
				{
					KIND="VEHICLE"
					VALUE="0"
				}
			}
			TYPEOF ACTION (STOP)
			{
			}
		}
	}
}
