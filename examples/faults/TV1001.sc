TYPEOF INCLUDE (1)
{
	LABEL="Example"
	TASK_KIND="0"
	hello
}
