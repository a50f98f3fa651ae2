TYPEOF INCLUDE (1)
{
	LABEL="Example"
	TASK_KIND="0"
	TYPEOF RULE (1)
	{
		LABEL="Rule 1"
		TYPEOF ACTION (STOP)
		{
		}
	}
}
