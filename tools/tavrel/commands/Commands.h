#ifndef TAVREL_COMMAND_COMMANDS_H
#define TAVREL_COMMAND_COMMANDS_H

namespace tavrel {

struct Context;

// The sub-commands, one unit each. They answer with an ExitStatus and give up with a Failure or with any failure of the
// library, which the caller turns into one sentence.
int RunTree(Context& context);
int RunList(Context& context);
int RunShow(Context& context);
int RunGet(Context& context);
int RunIds(Context& context);
int RunVariadicList(Context& context);
int RunVariadicAdd(Context& context);
int RunVariadicSet(Context& context);
int RunVariadicRemove(Context& context);
int RunCheck(Context& context);
int RunFormat(Context& context);
int RunRun(Context& context);
int RunJudge(Context& context);
int RunSet(Context& context);
int RunGraph(Context& context);
int RunFind(Context& context);
int RunDiff(Context& context);
int RunRefs(Context& context);
int RunOutline(Context& context);
int RunWords(Context& context);
int RunExplain(Context& context);
int RunVaryPlan(Context& context);
int RunVaryCount(Context& context);
int RunVaryList(Context& context);
int RunVaryShow(Context& context);
int RunVaryWrite(Context& context);
int RunVaryCoverage(Context& context);
int RunVarySchema(Context& context);
int RunFetch(Context& context);
int RunUri(Context& context);
int RunCampaignInit(Context& context);
int RunCampaignRun(Context& context);
int RunCampaignStatus(Context& context);
int RunCampaignMerge(Context& context);
int RunCampaignBisect(Context& context);
int RunCompletion(Context& context);
int RunMan(Context& context);

} // namespace tavrel

#endif
