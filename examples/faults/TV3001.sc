TYPEOF INCLUDE (1)
{
	LABEL="Example"
	TASK_KIND="0"
	TYPEOF VARIABLE (1)
	{
		LABEL="Speed"
		TYPE="FLOAT"
		VALUE="fast"
	}
}
