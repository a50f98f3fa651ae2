TYPEOF INCLUDE (1)
{
	LABEL="Example"
	TASK_KIND="0"
	TYPEOF RULE (1)
	{
		LABEL="the "fast" lane"
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
