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
			TYPEOF ACTION (NEXT_STATE)
			{
				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="2"
				}
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
			TYPEOF ACTION (NEXT_STATE)
			{
				TYPEOF PARAMETER (STATE)
				{
					KIND="TASK"
					VALUE="5"
				}
			}
		}
		TYPEOF TASK (3)
		{
			LABEL="State 3"
			TASK_KIND="0"
			TYPEOF RULE (3)
			{
				LABEL="Rule 3"
				TYPEOF CONDITION (IS_MOVING)
				{
					TYPEOF PARAMETER (VEHICLE)
					{
						KIND="VEHICLE"
						VALUE="0"
					}
				}
				TYPEOF ACTION (NEXT_STATE)
				{
					TYPEOF PARAMETER (STATE)
					{
						KIND="TASK"
						VALUE="4"
					}
				}
			}
		}
		TYPEOF TASK (4)
		{
			LABEL="State 4"
			TASK_KIND="0"
			TYPEOF TASK (5)
			{
				LABEL="State 5"
				TASK_KIND="0"
			}
		}
	}
}
