TYPEOF RULE (1)
{
	LABEL="Rule 1"
}
