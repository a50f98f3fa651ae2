// Faults planted at known places, one, five and twenty at a time, in every way in which a script is written in its
// file: exactly these are found, and nothing else.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <checking/Check.h>
#include <gtest/gtest.h>
#include <support/InstallationBuilder.h>

namespace {

using namespace TavrelChecking;

const std::string kExamples = TAVREL_EXAMPLES "/faults";
const std::string kCar = "\xF0\x9F\x9A\x97"; // beyond the first plane
// Where the finding begins and ends. They are taken out of the file when their places are known.
const std::string kBegin = "\xEE\x80\x80";
const std::string kEnd = "\xEE\x80\x81";

struct Plant {
    const char* rule;
    Severity severity;
    const char* find;        // in the text of a rule; empty to put `replacement` after the rule
    const char* replacement; // with "@<" and ">@" around the place
};

// A rule of the script. Its number and its timer are its own.
std::string RuleText(int number) {
    std::string text = R"(
	TYPEOF RULE (N)
	{
		LABEL="Rule N CAR"

		TYPEOF CONDITION (IS_MOVING)
		{
			MODIFIER="BECOMES_TRUE"

			TYPEOF PARAMETER (VEHICLE)
			{
				KIND="VEHICLE"
				VALUE="0"
			}
		}

		TYPEOF ACTION (SET_SPEED)
		{

			TYPEOF PARAMETER (VEHICLE)
			{
				KIND="VEHICLE"
				VALUE="0"
			}

			TYPEOF PARAMETER (SPEED)
			{
				KIND="USER"
				VALUE="50"
				OWNER_FILE=""
			}
		}

		TYPEOF ACTION (SET_VARIABLE)
		{

			TYPEOF PARAMETER (TARGET)
			{
				KIND="VARIABLE"
				VALUE="1"
				OWNER_FILE=""
			}

			TYPEOF PARAMETER (SPEED)
			{
				KIND="FUNCTION"

				TYPEOF FUNCTION (GET_SPEED)
				{

					TYPEOF PARAMETER (VEHICLE)
					{
						KIND="VEHICLE"
						VALUE="0"
					}
				}
			}
		}

		TYPEOF ELSE_ACTION (PAINT)
		{

			TYPEOF PARAMETER (COLOUR)
			{
				KIND="ENUM"
				VALUE="RED"
			}
		}
	}
)";
    for (std::size_t at = 0; (at = text.find("(N)", at)) != std::string::npos;)
        text.replace(at, 3, "(" + std::to_string(number) + ")");
    text.replace(text.find(" N CAR"), 6, " " + std::to_string(number) + " " + kCar);
    return text;
}

constexpr Severity kError = Severity::Error;
constexpr Severity kWarning = Severity::Warning;

// clang-format off
#define TASK_OF(name, inside) "\n\tTYPEOF TASK (" name ")\n\t{\n\t\tTASK_KIND=\"0\"\n" inside "\t}\n"
#define VARIABLE_OF(name) "\n\tTYPEOF VARIABLE (" name ")\n\t{\n\t\tTYPE=\"FLOAT\"\n\t}\n"
#define RULE_OF(name, action, inside) \
    "\n\tTYPEOF RULE (9" name ")\n\t{\n\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n" \
    "\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (" action ")\n\t\t{\n" inside "\t\t}\n\t}\n"
#define PARAMETER_OF(name, lines) "\t\t\tTYPEOF PARAMETER (" name ")\n\t\t\t{\n\t\t\t\t" lines "}\n"
#define STATE_OF(name, lines) RULE_OF(name, "NEXT_STATE", PARAMETER_OF("STATE", lines))
#define TARGET_OF(name, lines) \
    RULE_OF(name, "SET_VARIABLE", PARAMETER_OF("TARGET", lines) PARAMETER_OF("SPEED", "KIND=\"USER\"\n\t\t\t\tVALUE=\"7\"\n\t\t\t"))
constexpr Plant kPlants[] = {
    {"TV1001", kError, "\t\tLABEL=", "\t\t@<hello world>@\n\t\tLABEL="},
    {"TV1001", kError, "\t\t\tMODIFIER=", "\t\t\t@<?>@\n\t\t\tMODIFIER="},
    {"TV1001", kError, "\t\t\t\tKIND=\"ENUM\"", "\t\t\t\t@<KIND \"ENUM\">@\n\t\t\t\tKIND=\"ENUM\""},
    {"TV1002", kError, "ELSE_ACTION (PAINT)", "@<ELSEACTION>@ (PAINT)"},
    {"TV1003", kError, "ACTION (SET_SPEED)", "ACTION@<>@(SET_SPEED)"},
    {"TV1003", kError, "FUNCTION (GET_SPEED)", "FUNCTION (GET_SPEED@<>@"},
    {"TV1003", kError, "TYPEOF CONDITION", "TYPEOF@<>@CONDITION"},
    {"TV1003", kError, "TYPEOF ACTION (SET_SPEED)", "TYPEOF ACTION@<>@"},
    {"TV1004", kError, "CONDITION (IS_MOVING)\n\t\t{\n", "CONDITION (IS_MOVING)@<>@\n"},
    {"TV1004", kError, "FUNCTION (GET_SPEED)\n\t\t\t\t{\n", "FUNCTION (GET_SPEED)@<>@\n"},
    {"TV1005", kError, "OWNER_FILE=\"\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ACTION (SET_VARIABLE)", "OWNER_FILE=\"\"\n\t\t\t}\n\n\t\t@<>@TYPEOF ACTION (SET_VARIABLE)"},
    {"TV1005", kError, "\t\t\t\t}\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION", "\t\t\t@<>@}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION"},
    {"TV1007", kWarning, "LABEL=\"Rule", "LABEL=@<>@Rule"},
    {"TV1007", kError, "MODIFIER=\"BECOMES_TRUE\"", "MODIFIER=\"BECOMES_TRUE@<>@"},
    {"TV1007", kError, "KIND=\"ENUM\"", "KIND=\"ENUM@<>@"},
    {"TV1008", kWarning, "LABEL=\"Rule", "LABEL=\"@<a \"b\" Rule"},
    {"TV1008", kError, "VALUE=\"50\"", "VALUE=\"@<5\t0>@\""},
    {"TV1008", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF ACTION (ATTACH)\n\t\t{\n\n\t\t\tTYPEOF PARAMETER (DRIVER)\n\t\t\t{\n\t\t\t\tKIND=\"DRIVER\"\n\t\t\t\tVALUE=\"@<no\"body>@\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV1009", kError, "VALUE=\"RED\"\n\t\t\t}", "VALUE=\"RED\"\n@<            >@}"},
    {"TV1009", kError, "\t\t\tMODIFIER", "@<    >@MODIFIER"},
    {"TV1009", kError, "\t\tTYPEOF ACTION (SET_SPEED)", "\t\t@< >@TYPEOF ACTION (SET_SPEED)"},
    {"TV1010", kError, "\t\t\t\tVALUE=\"50\"\n", "\t\t\t\tVALUE=\"50\"\n\t\t\t\t@<VALUE>@=\"50\"\n"},
    {"TV1010", kError, "MODIFIER=\"BECOMES_TRUE\"\n", "MODIFIER=\"BECOMES_TRUE\"\n\t\t\t@<MODIFIER>@=\"IS_TRUE\"\n"},
    {"TV1011", kError, "\t\tLABEL=", "\t\t@<LABLE>@="},
    {"TV1011", kError, "\t\t\t\tVALUE=\"50\"\n", "\t\t\t\tVALUE=\"50\"\n\t\t\t\t@<UNIT>@=\"m\"\n"},
    {"TV1011", kError, "\t\t\t\tKIND=\"ENUM\"", "\t\t\t\t@<KNID>@=\"ENUM\""},
    {"TV1001", kError, "\t\t\t\tVALUE=\"50\"", "\t\t\t\t@<VALUE = \"50\">@"},
    {"TV1012", kWarning, "\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"50\"\n", "\t\t\t\tVALUE=\"50\"\n\t\t\t\t@<KIND>@=\"USER\"\n"},
    {"TV1013", kWarning, "VALUE=\"50\"\n\t\t\t\tOWNER_FILE=\"\"", "VALUE=\"50\"\n\t\t\t\t@<OWNER_FILE>@=\"fine.sc\""},
    {"TV1013", kWarning, "MODIFIER=\"BECOMES_TRUE\"\n", "MODIFIER=\"BECOMES_TRUE\"\n\t\t\t@<DURATION>@=\"3\"\n"},
    {"TV1014", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF @<VARIABLE (77)>@\n\t\t{\n\t\t\tTYPE=\"FLOAT\"\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV1018", kError, "", "\n\tTYPEOF VARIABLE (SLOT)\n\t{\n\t\tINTERACTIVE_TYPE=\"FLOAT\"\n\t\tINTERACTIVE_MIN_VALUE=\"@<low>@\"\n\t}\n"},
    {"TV1019", kError, "BECOMES_TRUE", "@<BECOME_TRUE>@"},
    {"TV1019", kError, "\t\tLABEL=", "\t\tEVALUATION=\"@<HARD>@\"\n\t\tLABEL="},
    {"TV2001", kError, "ACTION (SET_VARIABLE)", "ACTION (@<SET_VARIABEL>@)"},
    {"TV2002", kError, "(IS_MOVING)", "(@<IS_MOVIN>@)"},
    {"TV2002", kError, "", "\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF CONDITION (@<BOTH>@)\n\t\t{\n\t\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t\t{\n\t\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t\t{\n\t\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\t\tVALUE=\"0\"\n\t\t\t\t}\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV2003", kError, "(GET_SPEED)", "(@<GET_SPEDD>@)"},
    {"TV2004", kError, "PARAMETER (SPEED)", "PARAMETER (@<SPEDD>@)"},
    {"TV2005", kError, "\n\t\t\tTYPEOF PARAMETER (SPEED)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"50\"\n\t\t\t\tOWNER_FILE=\"\"\n\t\t\t}\n\t\t}", "\t\t@<>@}"},
    {"TV2006", kError, "\t\t\tTYPEOF PARAMETER (COLOUR)", "\t\t\tTYPEOF PARAMETER (@<LEFT>@)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"1\"\n\t\t\t}\n\n\t\t\tTYPEOF PARAMETER (COLOUR)"},
    {"TV2008", kError, "VALUE=\"RED\"", "VALUE=\"@<PURPLE>@\""},
    {"TV3001", kError, "VALUE=\"50\"", "VALUE=\"@<fast>@\""},
    {"TV3001", kWarning, "", "\n\tTYPEOF VARIABLE (SLOT)\n\t{\n\t\tTYPE=\"FLOAT\"\n\t\tVALUE=\"@<fast>@\"\n\t\tINTERACTIVE_TYPE=\"FLOAT\"\n\t}\n"},
    {"TV3002", kError, "VALUE=\"50\"", "VALUE=\"@<500>@\""},
    {"TV3003", kError, "KIND=\"USER\"", "KIND=\"@<VEHICLE>@\""},
    {"TV3004", kError, "VALUE=\"1\"", "VALUE=\"@<17>@\""},
    {"TV3005", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF ACTION (NEXT_STATE)\n\t\t{\n\n\t\t\tTYPEOF PARAMETER (STATE)\n\t\t\t{\n\t\t\t\tKIND=\"TASK\"\n\t\t\t\tVALUE=\"@<7777>@\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV3006", kError, "VALUE=\"0\"", "VALUE=\"@<17>@\""},
    {"TV3007", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF ACTION (SHOW)\n\t\t{\n\n\t\t\tTYPEOF PARAMETER (IMAGE)\n\t\t\t{\n\t\t\t\tKIND=\"FILE\"\n\t\t\t\tVALUE=\"@<arow.png>@\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV3008", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF ACTION (ATTACH)\n\t\t{\n\n\t\t\tTYPEOF PARAMETER (DRIVER)\n\t\t\t{\n\t\t\t\tKIND=\"DRIVER\"\n\t\t\t\tVALUE=\"@<nobody>@\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV3009", kError, "VALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"\"", "VALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"@<gone.sc>@\""},
    {"TV3010", kError, "\t\t\t\tTYPEOF FUNCTION (GET_SPEED)\n\t\t\t\t{\n\n\t\t\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t\t\t{\n\t\t\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\t\t\tVALUE=\"0\"\n\t\t\t\t\t}\n", "\t\t\t\tTYPEOF FUNCTION (@<GET_NAME>@)\n\t\t\t\t{\n"},
    {"TV3011", kError, "\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"50\"\n\t\t\t\tOWNER_FILE=\"\"\n\t\t\t}", "\t\t\t@<>@}"},
    {"TV3011", kError, "\t\t\t\tVALUE=\"50\"\n\t\t\t\tOWNER_FILE=\"\"\n\t\t\t}", "\t\t\t@<>@}"},
    {"TV3012", kError, "\n\t\t\t\tTYPEOF FUNCTION (GET_SPEED)\n\t\t\t\t{\n\n\t\t\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t\t\t{\n\t\t\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\t\t\tVALUE=\"0\"\n\t\t\t\t\t}\n\t\t\t\t}\n\t\t\t}", "\t\t\t@<>@}"},
    {"TV4001", kWarning, "", "\n\tTYPEOF @<TASK (SLOT)>@\n\t{\n\t\tTASK_KIND=\"0\"\n\t}\n"},
    {"TV4003", kWarning, "", "\n\tTYPEOF @<RULE (1)>@\n\t{\n\t\tLABEL=\"Pasted\"\n\t}\n"},
    {"TV4004", kWarning, "", "\n\tTYPEOF @<RULE (9SLOT)>@\n\t{\n\t\tTYPEOF CONDITION (EQUAL)\n\t\t{\n\t\t\tTYPEOF PARAMETER (LEFT)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"1\"\n\t\t\t}\n\t\t\tTYPEOF PARAMETER (RIGHT)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"2\"\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV4005", kWarning, "", "\n\tTYPEOF @<VARIABLE (SLOT)>@\n\t{\n\t\tTYPE=\"FLOAT\"\n\t\tVALUE=\"1\"\n\t}\n"},
    {"TV4007", kWarning, "", "\n\tTYPEOF @<INCLUDE (SLOT)>@\n\t{\n\t\tISA_INDEX=\"1\"\n\t\tTASK_KIND=\"0\"\n\t\tFILE=\"fine.sc\"\n\t}\n"},
    {"TV4008", kError, "CONDITION (IS_MOVING)\n\t\t{\n\t\t\tMODIFIER=\"BECOMES_TRUE\"\n\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n", "@<CONDITION (AND)>@\n\t\t{\n"},
    {"TV4009", kError, "\t\tTYPEOF ACTION (SET_SPEED)", "\t\tTYPEOF @<CONDITION (IS_MOVING)>@\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ACTION (SET_SPEED)"},
    {"TV4010", kWarning, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF ACTION (ADD_SCORE)\n\t\t{\n\n\t\t\tTYPEOF @<PARAMETER (SCORE_NUMBER)>@\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"7\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV4011", kWarning, "PARAMETER (SPEED)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"50\"", "@<PARAMETER (SPEED)>@\n\t\t\t{\n\t\t\t\tKIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"2\""},
    {"TV4012", kError, "", "\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF @<ACTION (STOP)>@\n\t\t{\n\t\t}\n\t}\n"},
    {"TV4013", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF @<ACTION (EVALUATION_COUNT)>@\n\t\t{\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV4014", kWarning, "\t\t\tTYPEOF PARAMETER (COLOUR)", "\t\t\tTYPEOF @<FUNCTION (GET_NAME)>@\n\t\t\t{\n\t\t\t}\n\n\t\t\tTYPEOF PARAMETER (COLOUR)"},
    {"TV6009", kError, "", "\n\tTYPEOF INCLUDE (SLOT)\n\t{\n\t\tISA_INDEX=\"1\"\n\t\tTASK_KIND=\"0\"\n\t\tFILE=\"@<gone_SLOT.sc>@\"\n\t}\n"},
    // What is asked for elsewhere, under a header that is read in another way than it is meant.
    {"TV1002", kError, "", "\n\tTYPEOF @<TAKS>@ (SLOT)\n\t{\n\t\tTASK_KIND=\"0\"\n\t}\n\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (NEXT_STATE)\n\t\t{\n\t\t\tTYPEOF PARAMETER (STATE)\n\t\t\t{\n\t\t\t\tKIND=\"TASK\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV1002", kError, "", "\n\tTYPEOF @<HISTORY>@ (SLOT)\n\t{\n\t\tTYPE=\"FLOAT\"\n\t}\n\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (SET_VARIABLE)\n\t\t{\n\t\t\tTYPEOF PARAMETER (TARGET)\n\t\t\t{\n\t\t\t\tKIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t}\n\t\t\tTYPEOF PARAMETER (SPEED)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"7\"\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV1003", kError, "", "\n\tTYPEOF TASK@<  >@(SLOT)\n\t{\n\t\tTASK_KIND=\"0\"\n\t}\n\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (NEXT_STATE)\n\t\t{\n\t\t\tTYPEOF PARAMETER (STATE)\n\t\t\t{\n\t\t\t\tKIND=\"TASK\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV1003", kError, "", "\n\tTYPEOF TASK @<[>@SLOT]\n\t{\n\t\tTASK_KIND=\"0\"\n\t}\n\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (NEXT_STATE)\n\t\t{\n\t\t\tTYPEOF PARAMETER (STATE)\n\t\t\t{\n\t\t\t\tKIND=\"TASK\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV1003", kError, "", "\n\tTYPEOF VARIABLE (SLOT@<>@\n\t{\n\t\tTYPE=\"FLOAT\"\n\t}\n\n\tTYPEOF RULE (9SLOT)\n\t{\n\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t{\n\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t{\n\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (SET_VARIABLE)\n\t\t{\n\t\t\tTYPEOF PARAMETER (TARGET)\n\t\t\t{\n\t\t\t\tKIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t}\n\t\t\tTYPEOF PARAMETER (SPEED)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"7\"\n\t\t\t}\n\t\t}\n\t}\n"},
    {"TV1007", kError, "", "\n\tTYPEOF INCLUDE (SLOT)\n\t{\n\t\tISA_INDEX=\"1\"\n\t\tTASK_KIND=\"0\"\n\t\tFILE=\"steps.sc@<>@\n\t}\n"},
    // What has its own finding makes no other one.
    {"TV1011", kError, "\t\t\t\tKIND=\"ENUM\"", "\t\t\t\t@<kind>@=\"ENUM\""},
    {"TV1019", kError, "\t\t\tMODIFIER=\"BECOMES_TRUE\"", "\t\t\tMODIFIER=\"@<HAS_BEN_TRUE_FOR>@\"\n\t\t\tDURATION=\"3\""},
    {"TV3003", kError, "KIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"\"", "KIND=\"@<VARIABL>@\"\n\t\t\t\tVALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"fine.sc\""},
    {"TV3001", kWarning, "VALUE=\"0\"", "VALUE=\"@<Car>@\""},
    {"TV1001", kError, "\t\t\tMODIFIER=", "\t\t\t@<{>@\n\t\t\tMODIFIER="},
    {"TV1001", kError, "\t{\n\t\tLABEL=", "\t{\n\t@<{>@\n\t\tLABEL="},
    {"TV1001", kError, "\t\t\t\tVALUE=\"50\"\n\t\t\t\tOWNER_FILE=\"\"\n\t\t\t}", "\t\t\t\tVALUE=\"50\"\n\t\t\t\tOWNER_FILE=\"\"\n\t\t\t@<_>@"},
    {"TV1001", kError, "CONDITION (IS_MOVING)\n\t\t{", "CONDITION (IS_MOVING)\n\t\t@<x>@"},
    {"TV1001", kError, "\t\tTYPEOF ACTION (SET_SPEED)\n\t\t{", "\t\t@<{>@\n\t\tTYPEOF ACTION (SET_SPEED)"},
    {"TV1005", kError, "VALUE=\"RED\"\n\t\t\t}", "VALUE=\"RED\"@<>@}"},
    {"TV1005", kError, "VALUE=\"RED\"\n\t\t\t}\n\t\t}", "VALUE=\"RED\"\n\t\t\t}@<>@}"},
    {"TV1001", kError, "\t\t\t\tKIND=\"ENUM\"", "\t\t\t\t@<KI=D=\"ENUM\">@"},
    {"TV1001", kError, "\t\t\t\tKIND=\"ENUM\"", "\t\t\t\t@<K IND=\"ENUM\">@"},
    {"TV1004", kError, "CONDITION (IS_MOVING)\n\t\t{\n\t\t\tMODIFIER=\"BECOMES_TRUE\"", "CONDITION (IS_MOVING)@<>@\n\t\t\tMODIFIER=\"BECOMES_TRUE\"\n\t\t{"},
    {"TV1004", kError, "\t\tTYPEOF ACTION (SET_SPEED)\n", "\t\tTYPEOF ACTION (SET_SPEED)@<>@\n\t\tTYPEOF ACTION (SET_SPEED)\n"},
    {"TV1008", kError, "VALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"\"", "VALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"@<fine\t.sc>@\""},
    {"TV3002", kError, "\t\tTYPEOF ELSE_ACTION (PAINT)", "\t\tTYPEOF ACTION (ADD_SCORE)\n\t\t{\n\t\t\tTYPEOF PARAMETER (SCORE_NUMBER)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"@<100>@\"\n\t\t\t}\n\t\t}\n\n\t\tTYPEOF ELSE_ACTION (PAINT)"},
    {"TV3003", kError, "", STATE_OF("SLOT", "KIND=\"@<VEHICLE>@\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t") TASK_OF("SLOT", "")},
    {"TV3011", kError, "", STATE_OF("SLOT", "KIND=\"TASK\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t")
                           TASK_OF("SLOT", "\n\t\tTYPEOF RULE (8SLOT)\n\t\t{\n\n\t\t\tTYPEOF CONDITION (IS_MOVING)\n\t\t\t{\n\n\t\t\t\tTYPEOF PARAMETER (VEHICLE)\n\t\t\t\t{\n\t\t\t\t\tKIND=\"VEHICLE\"\n\t\t\t\t\tVALUE=\"0\"\n\t\t\t\t}\n\t\t\t}\n\n\t\t\tTYPEOF ACTION (NEXT_STATE)\n\t\t\t{\n\n\t\t\t\tTYPEOF PARAMETER (STATE)\n\t\t\t\t{\n\t\t\t\t\tKIND=\"TASK\"\n\t\t\t\t@<>@}\n\t\t\t}\n\t\t}\n") TASK_OF("7SLOT", "")},
    {"TV1002", kError, "", "\n\tTYPEOF @<INCLUD>@ (SLOT)\n\t{\n\t\tISA_INDEX=\"1\"\n\t\tFILE=\"steps.sc\"\n\t}\n"
                           TARGET_OF("SLOT", "KIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"9\"\n\t\t\t\tOWNER_FILE=\"steps.sc\"\n\t\t\t")},
    {"TV3009", kError, "", VARIABLE_OF("SLOT") TARGET_OF("SLOT", "KIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t\tOWNER_FILE=\"@<gone.sc>@\"\n\t\t\t")},
};
// Which of several unused variables is the one that is not named shows only where there is one.
constexpr Plant kAlone[] = {
    {"TV3011", kError, "", VARIABLE_OF("SLOT") TARGET_OF("SLOT", "KIND=\"VARIABLE\"\n\t\t\t@<>@")},
    {"TV1002", kError, "", "\n\tTYPEOF @<EVALUATON>@ (1)\n\t{\n\t\tSCORE=\"2 0\"\n\t}\n"
                           RULE_OF("SLOT", "ADD_SCORE", PARAMETER_OF("SCORE_NUMBER", "KIND=\"USER\"\n\t\t\t\tVALUE=\"2\"\n\t\t\t"))},
    {"TV1018", kError, "", "\n\tTYPEOF EVALUATION (1)\n\t{\n\t\tSCORE=\"@<two>@\"\n\t}\n"
                           RULE_OF("SLOT", "ADD_SCORE", PARAMETER_OF("SCORE_NUMBER", "KIND=\"USER\"\n\t\t\t\tVALUE=\"2\"\n\t\t\t"))},
    {"TV1001", kError, "", STATE_OF("6SLOT", "KIND=\"TASK\"\n\t\t\t\tVALUE=\"SLOT\"\n\t\t\t")
                           STATE_OF("SLOT", "KIND=\"TASK\"\n\t\t\t\tVALUE=\"7SLOT\"\n\t\t\t")
                           TASK_OF("SLOT", "\t\tTYPEOF RULE (8SLOT)\n\t\t{\n\t\t}\n\t\t@<}>@\n\t\tTYPEOF RULE (7SLOT)\n\t\t{\n\t\t}\n") TASK_OF("7SLOT", "")},
    // The include has one of that number, too.
    {"TV4003", kWarning, "", VARIABLE_OF("901") TARGET_OF("901", "KIND=\"VARIABLE\"\n\t\t\t\tVALUE=\"901\"\n\t\t\t")
                             "\n\tTYPEOF @<VARIABLE (901)>@\n\t{\n\t\tTYPE=\"FLOAT\"\n\t}\n"},
};
// What is not understood may be the parameter that its call lacks, and then nothing else is unnamed.
constexpr Plant kTogether[] = {
    {"TV2004", kError, "PARAMETER (TARGET)", "PARAMETER (@<TARGIT>@)"},
    {"TV4005", kWarning, "", "\n\tTYPEOF @<VARIABLE (SLOT)>@\n\t{\n\t\tTYPE=\"FLOAT\"\n\t\tVALUE=\"1\"\n\t}\n"},
};
// Only a carriage return makes it a header, and XML leaves none.
constexpr Plant kNameless[] = {
    {"TV1003", Severity::Note, "", "\n\tTYPEOF RULE@<>@\n\t{\n\t}\n"},
    {"TV1003", kError, "", STATE_OF("SLOT", "KIND=\"TASK\"\n\t\t\t\tVALUE=\"7SLOT\"\n\t\t\t") "\n\tTYPEOF TASK@<>@\n\t{\n\t\tTASK_KIND=\"0\"\n\t}\n"},
};
// What its header is meant to say takes a number all the same.
constexpr Plant kSameNumber[] = {
    {"TV1003", kWarning, "", "\n\tTYPEOF RULE @<>@77)\n\t{\n\t}\n"},
    {"TV4003", kWarning, "", "\n\tTYPEOF @<RULE (77)>@\n\t{\n\t}\n"},
};
// clang-format on

// Whether the vehicles and drivers of the scenario file show the fault.
bool NeedsFile(const Plant& plant) {
    const std::string_view replacement = plant.replacement;
    return std::string_view(plant.rule) == "TV3006" || replacement.find("DRIVER") != std::string_view::npos ||
           replacement.find("<Car>") != std::string_view::npos;
}

std::string Replaced(std::string text, const std::string& find, const std::string& replacement) {
    for (std::size_t at = 0; (at = text.find(find, at)) != std::string::npos; at += replacement.size())
        text.replace(at, find.size(), replacement);
    return text;
}

std::string Planted(int number, const Plant& plant) {
    std::string text = RuleText(number);
    std::string replacement = Replaced(plant.replacement, "SLOT", std::to_string(100 + number));
    // The second "@<" of a value without its end goes on to the quote of the whole label.
    replacement = Replaced(Replaced(replacement, "@<", kBegin), ">@", kEnd);
    if (!*plant.find) return text + replacement;
    const std::size_t at = text.find(plant.find);
    EXPECT_NE(at, std::string::npos) << plant.rule << " " << plant.find;
    text.replace(at, std::string(plant.find).size(), replacement);
    if (replacement.find(kEnd) == std::string::npos) {
        // The place ends at the last quote of its line.
        const std::size_t line = text.find('\n', text.find(kBegin));
        text.insert(text.rfind('"', line), kEnd);
    }
    return text;
}

std::string Script(const std::vector<const Plant*>& plants) {
    std::string text =
        "TYPEOF SCENARIO (1)\n{\n\tLABEL=\"Planted\"\n\tFILE=\"planted.sc\"\n\tTASK_KIND=\"0\"\n"
        "\n\tTYPEOF INCLUDE (1)\n\t{\n\t\tISA_INDEX=\"1\"\n\t\tTASK_KIND=\"0\"\n\t\tFILE=\"fine.sc\"\n\t}\n"
        "\n\tTYPEOF VARIABLE (1)\n\t{\n\t\tLABEL=\"Target\"\n\t\tTYPE=\"FLOAT\"\n\t\tVALUE=\"1\"\n"
        "\t\tINTERACTIVE_TYPE=\"FLOAT\"\n\t}\n"
        "\n\tTYPEOF VARIABLE (2)\n\t{\n\t\tTYPE=\"INTEGER\"\n\t\tVALUE=\"1\"\n"
        "\t\tINTERACTIVE_TYPE=\"INTEGER\"\n\t}\n"
        "\n\tTYPEOF TASK (1)\n\t{\n\t\tTASK_KIND=\"0\"\n\t}\n";
    text += RuleText(1);
    int number = 2;
    for (const Plant* plant : plants) text += Planted(number++, *plant);
    text += RuleText(number);
    return text + "}\n";
}

enum class Form { Plain, CData, References, Alone };

// The script as it stands in a file.
std::string Written(const std::string& script, Form form) {
    if (form == Form::CData) return "<![CDATA[" + script + "]]>";
    std::string written;
    int count = 0;
    for (std::size_t at = 0; at < script.size(); ++at) {
        const char c = script[at];
        const bool isAscii = (c & '\x80') == 0;
        if (form == Form::References && script.compare(at, kCar.size(), kCar) == 0) {
            written += "&#x1F697;";
            at += kCar.size() - 1;
        } else if (form == Form::References && (c == '"' || (isAscii && c != '\n' && ++count % 7 == 0))) {
            written += c == '"' ? std::string("&quot;") : "&#" + std::to_string(static_cast<int>(c)) + ";";
        } else if (c == '<') {
            written += "&lt;";
        } else if (c == '&') {
            written += "&amp;";
        } else {
            written += c;
        }
    }
    return written;
}

std::string File(const std::string& script, Form form, bool hasReturns, bool hasMark) {
    if (form == Form::Alone) return hasReturns ? Replaced(script, "\n", "\r\n") : script;
    std::string file = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<sce version=\"1\">\n  <Scenario>\n"
                       "    <name>Planted " +
                       kCar +
                       "</name>\n    <Vehicle>\n      <id ScenarioTreeValue=\"0\"/>\n    </Vehicle>\n"
                       "    <ScenarioScript>\n      <scriptName>main</scriptName>\n      <text>\n" +
                       Written(script, form) + "</text>\n    </ScenarioScript>\n  </Scenario>\n</sce>\n";
    if (hasReturns) file = Replaced(file, "\n", "\r\n");
    return hasMark ? "\xEF\xBB\xBF" + file : file;
}

// The places between the marks, which are taken out.
std::vector<Span> TakeMarks(std::string& file) {
    std::vector<Span> spans;
    std::string clean;
    std::uint32_t row = 1, column = 1;
    for (std::size_t at = 0; at < file.size(); ++at) {
        if (file.compare(at, 3, "\xEF\xBB\xBF") == 0) {
            clean += file.substr(at, 3);
            at += 2;
        } else if (file.compare(at, kBegin.size(), kBegin) == 0) {
            spans.push_back({row, column, 0, 0});
            at += kBegin.size() - 1;
        } else if (file.compare(at, kEnd.size(), kEnd) == 0) {
            spans.back().endRow = row;
            spans.back().endColumn = column;
            at += kEnd.size() - 1;
        } else {
            clean += file[at];
            if (file[at] == '\n') {
                ++row;
                column = 1;
            } else if ((file[at] & '\xC0') != '\x80') {
                ++column;
            }
        }
    }
    file = clean;
    return spans;
}

std::string Text(const char* rule, Severity severity, const Span& span) {
    return std::string(rule) + " " + WordOf(severity) + " " + std::to_string(span.row) + ":" +
           std::to_string(span.column) + "-" + std::to_string(span.endRow) + ":" + std::to_string(span.endColumn);
}

struct Case {
    std::vector<const Plant*> plants;
    Form form;
    bool hasReturns;
    bool hasMark;
};

// All files in one call, so that the root model is looked at once.
void ExpectFound(const std::vector<Case>& cases) {
    const std::string folder = testing::TempDir() + "planted/";
    std::filesystem::create_directories(folder);
    std::vector<Job> jobs;
    std::vector<std::vector<Span>> spans;
    for (const Case& one : cases) {
        std::string file = File(Script(one.plants), one.form, one.hasReturns, one.hasMark);
        spans.push_back(TakeMarks(file));
        Job job;
        job.path = folder + std::to_string(jobs.size()) + (one.form == Form::Alone ? ".sc" : ".sce");
        job.kind = KindOfFile(job.path);
        job.installation = kExamples + "/tavrel.xml";
        job.configuration = "Faults";
        std::ofstream(job.path, std::ios::binary) << file;
        jobs.push_back(job);
    }
    const Result result = Check(jobs, {});
    for (std::size_t at = 0; at < cases.size(); ++at) {
        std::vector<std::string> expected, found;
        ASSERT_EQ(spans[at].size(), cases[at].plants.size());
        for (std::size_t plant = 0; plant < cases[at].plants.size(); ++plant)
            expected.push_back(
                Text(cases[at].plants[plant]->rule, cases[at].plants[plant]->severity, spans[at][plant]));
        std::string messages;
        for (const Finding& finding : result.findings) {
            if (finding.file != jobs[at].path) continue;
            found.push_back(Text(finding.rule->id, finding.severity, finding.span));
            messages += found.back() + " " + finding.message + "\n";
        }
        std::sort(expected.begin(), expected.end());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, expected) << jobs[at].path << "\n" << messages;
        if (found == expected) std::filesystem::remove(jobs[at].path);
    }
}

TEST(PlantedTest, NothingIsFoundWhereNothingIsPlanted) {
    std::vector<Case> cases;
    for (const Form form : {Form::Plain, Form::CData, Form::References})
        for (const bool hasReturns : {false, true}) cases.push_back({{}, form, hasReturns, hasReturns});
    ExpectFound(cases);
}

TEST(PlantedTest, EachFaultIsFoundAloneInEveryForm) {
    std::vector<Case> cases;
    for (const Plant& plant : kPlants)
        for (const Form form : {Form::Plain, Form::CData, Form::References, Form::Alone})
            if (form != Form::Alone || !NeedsFile(plant))
                cases.push_back({{&plant}, form, form != Form::Plain, form != Form::CData});
    for (const auto& [one, other] :
         {std::pair(&kTogether[0], &kTogether[1]), std::pair(&kSameNumber[0], &kSameNumber[1])})
        cases.push_back({{one, other}, Form::Plain, false, false});
    for (const Plant& plant : kNameless) cases.push_back({{&plant}, Form::Alone, true, false});
    for (const Plant& plant : kAlone) cases.push_back({{&plant}, Form::Plain, false, false});
    ExpectFound(cases);
}

TEST(PlantedTest, ManyFaultsAreFoundTogether) {
    std::mt19937 random(20);
    std::vector<Case> cases;
    for (const std::size_t count : {std::size_t{5}, std::size_t{20}})
        for (int run = 0; run < 30; ++run) {
            std::vector<const Plant*> plants;
            for (const Plant& plant : kPlants) plants.push_back(&plant);
            std::shuffle(plants.begin(), plants.end(), random);
            plants.resize(count);
            const Form forms[] = {Form::Plain, Form::CData, Form::References};
            cases.push_back({plants, forms[run % 3], run % 2 == 0, run % 5 == 0});
        }
    ExpectFound(cases);
}

constexpr const char* kModel = "/pack/data/tools/nuro/nuro.mdl";

// The examples once more, for a test that changes them; the path of their folder.
std::string CopyOfExamples(const std::string& name) {
    using std::filesystem::copy_options;
    std::string folder = testing::TempDir() + name;
    std::filesystem::copy(kExamples, folder,
                          copy_options::recursive | copy_options::overwrite_existing | copy_options::skip_symlinks);
    return folder;
}

// A scenario of the examples' configuration that stands nowhere yet.
Job ScenarioJob() {
    Job job;
    job.path = testing::TempDir() + "planted.sce";
    job.kind = FileKind::Scenario;
    job.installation = kExamples + "/tavrel.xml";
    job.configuration = "Faults";
    return job;
}

// A file that cannot be loaded is looked at as far as its tags show what was meant.
TEST(PlantedTest, AFaultOfTheFileHidesNoneOfItsScripts) {
    using namespace std::string_literals;
    struct Row {
        const char* rule;
        const char* find;
        std::string replacement;
    };
    // clang-format off
    const Row rows[] = {
        {"TV1016", "Planted\"",       "Plan@<"s + '\0' + ">@ted\""},
        {"TV1016", "<name>Planted",   "<name>@<"s + '\0' + ">@Planted"},
        {"TV1016", "FILE=\"planted",  "FILE=\"@<&#0;>@planted"},
        {"TV1017", "LABEL=\"Target",  "LABEL=\"T@<\xE4>@rget"},
        {"TV1017", "KIND=\"USER\"",   "KIND=\"US@<\xC4>@ER\""},
        {"TV1017", "<scriptName>",    "<scriptName>@<\xFF\xFE>@"},
        {"TV6002", "LABEL=\"Target",  "LABEL=\"@<&#xD800;>@Target"},
        {"TV6002", "LABEL=\"Target",  "LABEL=\"@<<>@ 5 Target"},
        {"TV6002", "</name>",         "</@<nmae>@>"},
        {"TV6002", "</scriptName>",   "@<>@"},
        {"TV6002", "\n    </Vehicle>", "@<>@"},
        {"TV6002", "<id ScenarioTreeValue=\"0\"/>", "<id ScenarioTreeValue=\"0@<>@/>"},
        {"TV6002", "<id ScenarioTreeValue=\"0\"/>", "<id ScenarioTreeValue=@<>@0/>"},
        {"TV6002", "<Vehicle>",       "<Vehicle@<>@"},
        {"TV6002", "<Vehicle>",       "@<<!-->@ once\n    <Vehicle>"},
        {"TV6002", "  </Scenario>",   "@<</Vehicle>>@\n  </Scenario>"},
        {"TV6002", "</sce>",          "</sce>@<more>@"},
        {"TV6002", "</sce>\n",        "@<>@"},
    };
    // clang-format on
    const std::vector<const Plant*> inScript = {&kPlants[0], &kPlants[3], &kPlants[30]};
    for (const Row& row : rows) {
        std::string file = File(Script(inScript), Form::Plain, false, false);
        ASSERT_NE(file.find(row.find), std::string::npos) << row.find;
        file.replace(file.find(row.find), std::string(row.find).size(),
                     Replaced(Replaced(row.replacement, "@<", kBegin), ">@", kEnd));
        const std::vector<Span> spans = TakeMarks(file);
        std::vector<std::string> expected, found;
        for (const Span& span : spans) expected.push_back(Text("", kError, span));
        std::string all;
        std::size_t ofRow = 0;
        for (const Finding& finding : CheckText(file, ScenarioJob(), {}).findings) {
            found.push_back(Text("", finding.severity, finding.span));
            all += found.back() + " " + finding.rule->id + " " + finding.message + "\n";
            ofRow += std::string_view(finding.rule->id) == row.rule ? 1U : 0U;
        }
        EXPECT_EQ(found, expected) << row.replacement << "\n" << all;
        EXPECT_EQ(ofRow, 1U) << row.replacement << "\n" << all;
    }
}

// The library takes these, as they are written or as nothing.
TEST(PlantedTest, WhatIsNoXmlAndReadAllTheSameIsAWarning) {
    struct Row {
        const char* rule;
        const char* find;
        std::string replacement;
    };
    const Row rows[] = {
        {"TV6002", "LABEL=\"Target", "LABEL=\"Target @<&>@ more"},
        {"TV6002", "<name>Planted", "<name>@<&nbsp;>@Planted"},
        {"TV6002", "<id ScenarioTreeValue", "<id unit=\"@<&#xZ;>@\" ScenarioTreeValue"},
        {"TV1020", "<scriptName>",
         "<text>" + kBegin + kEnd + "</text>\n    </ScenarioScript>\n    <ScenarioScript>\n      <scriptName>"},
        {"", "<scriptName>", "<!-- & --><?a & b?><scriptName>"},
        {"", "<sce version", "<!DOCTYPE sce><sce version"},
    };
    for (const Row& row : rows) {
        std::string file = File(Script({}), Form::Plain, false, false);
        file.replace(file.find(row.find), std::string(row.find).size(),
                     Replaced(Replaced(row.replacement, "@<", kBegin), ">@", kEnd));
        std::vector<std::string> expected, found;
        for (const Span& span : TakeMarks(file)) expected.push_back(Text(row.rule, kWarning, span));
        for (const Finding& finding : CheckText(file, ScenarioJob(), {}).findings)
            if (std::string_view(finding.rule->id) != "TV6003")
                found.push_back(Text(finding.rule->id, finding.severity, finding.span));
        EXPECT_EQ(found, expected) << row.replacement;
    }
}

// What a variable is declared for is not known where a line of it has its own finding.
TEST(PlantedTest, AFaultOfAVariableMakesNoneOfItsDeclaration) {
    const std::string declaration =
        "    <VariadicParameter>\n      <name>a</name>\n      <parameterId>/sce/Scenario/ScenarioScript[scriptName="
        "\"main\"]/Variable[name=5]/value</parameterId>\n      <LiteralParameter>\n        <default>a</default>\n"
        "        <LiteralRange>\n          <literal>a</literal>\n        </LiteralRange>\n      </LiteralParameter>\n"
        "    </VariadicParameter>\n";
    const std::string number =
        Replaced(Replaced(declaration, "Literal", "Real"), "<literal>a</literal>", "<minimum>-7</minimum>");
    struct Row {
        const char* rule;
        const char* variable;
        const std::string& declaration;
    };
    const Row rows[] = {
        {"TV1002", "TYPEOF @<VARIABL>@ (5)\n\t{\n\t\tINTERACTIVE_TYPE=\"STRING\"\n\t}\n", declaration},
        {"TV1008", "TYPEOF VARIABLE (5)\n\t{\n\t\tINTERACTIVE_TYPE=\"@<STR\tING>@\"\n\t}\n", declaration},
        {"TV1018",
         "TYPEOF VARIABLE (5)\n\t{\n\t\tINTERACTIVE_TYPE=\"FLOAT\"\n\t\tINTERACTIVE_MIN_VALUE=\"@<low>@\"\n\t}\n",
         Replaced(number, "<default>a", "<default>-1")},
    };
    for (const Row& row : rows) {
        const std::string variable = Replaced(Replaced(row.variable, "@<", kBegin), ">@", kEnd);
        std::string file = File(Replaced(Script({}), "\tTYPEOF TASK (1)", "\t" + variable + "\n\tTYPEOF TASK (1)"),
                                Form::Plain, false, false);
        file.insert(file.find("  </Scenario>"), row.declaration);
        const std::vector<Span> spans = TakeMarks(file);
        std::vector<std::string> found;
        for (const Finding& finding : CheckText(file, ScenarioJob(), {}).findings)
            found.push_back(Text(finding.rule->id, finding.severity, finding.span));
        EXPECT_EQ(found, std::vector<std::string>{Text(row.rule, kError, spans.at(0))});
    }
}

// The library passes over a file that holds something else than an include; it is an error where somebody needs it.
TEST(PlantedTest, AnIncludeThatBeginsWithAnotherItemIsTold) {
    const std::string folder = CopyOfExamples("other_top");
    std::ofstream(folder + "/pack/data/script/include/part.sc")
        << "TYPEOF SCENARIO (1)\n{\n\tTYPEOF VARIABLE (9)\n\t{\n\t\tTYPE=\"FLOAT\"\n\t}\n}\n";
    for (const bool isNeeded : {false, true}) {
        std::string script = Script({});
        script.insert(
            script.find("\n\tTYPEOF VARIABLE (1)"),
            "\n\tTYPEOF INCLUDE (2)\n\t{\n\t\tISA_INDEX=\"1\"\n\t\tTASK_KIND=\"0\"\n\t\tFILE=\"part.sc\"\n\t}\n");
        const std::string use = "VALUE=\"1\"\n\t\t\t\tOWNER_FILE=\"\"";
        if (isNeeded) script.replace(script.find(use), use.size(), "VALUE=\"9\"\n\t\t\t\tOWNER_FILE=\"part.sc\"");
        Job job;
        job.path = folder + "/other_top.sce";
        job.kind = FileKind::Scenario;
        job.installation = folder + "/tavrel.xml";
        job.configuration = "Faults";
        std::ofstream(job.path, std::ios::binary) << File(script, Form::Plain, false, false);
        std::vector<std::string> found;
        for (const Finding& finding : Check({job}, {}).findings)
            found.push_back(Text(finding.rule->id, finding.severity, finding.span));
        EXPECT_EQ(found, std::vector<std::string>{Text("TV1021", isNeeded ? kError : kWarning, {1, 8, 1, 16})});
    }
}

TEST(PlantedTest, AFaultInAModelMakesNoOther) {
    const std::string folder = CopyOfExamples("broken_model");
    const std::string path = folder + kModel;
    const std::string model = contentOf(kExamples + kModel);
    struct Row {
        const char* rule;
        const char* find;
        const char* replacement;
    };
    // clang-format off
    const Row rows[] = {
        {"TV1002", "TYPEOF PARAMETER (SPEED)\n\t\t{\n\t\t\tLABEL", "TYPEOF @<PARAM>@ (SPEED)\n\t\t{\n\t\t\tLABEL"},
        {"TV1002", "TYPEOF ENUMTAB", "TYPEOF @<ENUMTABLE>@"},
        {"TV1003", "FOLDER (ACTION_LIST)", "FOLDER @<>@ACTION_LIST)"},
        {"TV1011", "KINDLIST=\"TASK\"", "@<KINDLST>@=\"TASK\""},
        {"TV1019", "KINDLIST=\"TASK\"", "KINDLIST=\"@<TASKS>@\""},
        {"TV1014", "\t\t\tTYPEOF ENUM (GREEN)", "\t\t\tTYPEOF @<ACTION (STOP)>@\n\t\t\t{\n\t\t\t}\n\t\t\tTYPEOF ENUM (GREEN)"},
        {"TV1021", "TYPEOF FOLDER (root)", "TYPEOF @<GROUP>@ (root)"},
        {"TV2016", "MAXVALUE=\"250\"", "MAXVALUE=\"@<0>@\""},
        {"TV1018", "MINVALUE=\"0\"\n\t\t\tMAXVALUE=\"250\"", "MINVALUE=\"-9\"\n\t\t\tMAXVALUE=\"@<low>@\""},
        {"TV1019", "KINDLIST=\"VARIABLE\"", "KINDLIST=\"@<VARIALBE>@\""},
        {"TV1003", "TYPEOF ENUMTAB (COLOURS)", "TYPEOF ENUMTAB@<  >@(COLOURS)"},
        {"TV2009", "FOLDER (ENUMTAB_LIST)", "FOLDER (@<ENUMTABS_LIST>@)"},
        {"TV9001", "FOLDER (ACTION_LIST)", "FOLDER (@<AKTION_LIST>@)"},
        {"TV1002", "FOLDER (PARAMETER_LIST)", "@<FLODER>@ (PARAMETER_LIST)"},
        {"TV2004", "ACTION (SET_SPEED)\n\t\t{\n\t\t\tLABEL=\"Set speed\"\n\t\t\tCODE=\"2\"\n\t\t\tTYPEOF PARAMETER (VEHICLE)",
                   "ACTION (SET_SPEED)\n\t\t{\n\t\t\tLABEL=\"Set speed\"\n\t\t\tCODE=\"2\"\n\t\t\tTYPEOF PARAMETER (@<VEHICEL>@)"},
        {"TV2015", "LABEL=\"speed\"\n\t\t\tTYPE=\"FLOAT\"\n\t\t\tUSAGE=\"BY_VALUE\"\n\t\t\tKINDLIST=\"USER VARIABLE FUNCTION\"\n\t\t\tMINVALUE=\"0\"\n\t\t\tMAXVALUE=\"250\"\n\t\t",
                   "LABEL=\"speed\"\n\t\t\tUSAGE=\"BY_VALUE\"\n\t\t\tKINDLIST=\"USER VARIABLE FUNCTION\"\n\t\t\tMINVALUE=\"0\"\n\t\t\tMAXVALUE=\"250\"\n\t\t@<>@"},
        {"TV1019", "LABEL=\"speed\"\n\t\t\tTYPE=\"FLOAT\"", "LABEL=\"speed\"\n\t\t\tTYPE=\"@<FLAOT>@\""},
        {"TV2017", "TYPEOF RETURN (RESULT)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"\"\n\t\t\t}\n",
                   "TYPEOF RETURN (RESULT)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"\"\n\t\t\t}\n\t\t\tTYPEOF RETURN (@<RESULT>@)\n\t\t\t{\n\t\t\t\tKIND=\"USER\"\n\t\t\t\tVALUE=\"\"\n\t\t\t}\n"},
        {"TV1020", model.c_str(), "@<>@"},
        {"TV2010", "\t\tTYPEOF ACTION (STOP)", "\t\tTYPEOF FOLDER (more)\n\t\t{\n\t\t\tTYPEOF ACTION (STOP)\n\t\t\t{\n\t\t\t}\n\t\t\tTYPEOF ACTION (@<STOP>@)\n\t\t\t{\n\t\t\t\tLABEL=\"Stop\"\n\t\t\t}\n\t\t}\n\t\tTYPEOF ACTION (HALT)"},
    };
    // clang-format on
    for (const Row& row : rows) {
        ASSERT_NE(model.find(row.find), std::string::npos) << row.find;
        std::string text = model;
        const std::string mark = Replaced(Replaced(row.replacement, "@<", kBegin), ">@", kEnd);
        text.replace(text.find(row.find), std::string(row.find).size(), mark);
        const std::vector<Span> spans = TakeMarks(text);
        std::ofstream(path, std::ios::binary) << text;
        const std::string scenario = folder + "/planted.sce";
        std::ofstream(scenario, std::ios::binary) << File(Script({}), Form::Plain, false, false);
        std::vector<std::string> found;
        const std::string installation = folder + "/tavrel.xml";
        const std::string script = folder + "/pack/data/script/include/fine.sc";
        for (const Finding& finding : Check({{path, FileKind::Model, installation, "Faults"},
                                             {script, FileKind::Script, installation, "Faults"},
                                             {scenario, FileKind::Scenario, installation, "Faults"}},
                                            {})
                                          .findings)
            if (finding.severity != Severity::Note) // of what the scenario does not use
                found.push_back(Text(finding.rule->id, finding.severity, finding.span) + " " + finding.message);
        ASSERT_EQ(found.size(), 1U) << row.replacement << testing::PrintToString(found);
        EXPECT_TRUE(found[0].starts_with(Text(row.rule, kError, spans.at(0)))) << found[0];
    }
}

// Which vehicle has the input is not known where the definition of the parameter that names it is broken.
TEST(PlantedTest, AVehicleThatIsNotUnderstoodMakesNoInputUnknown) {
    const std::string folder = CopyOfExamples("broken_vehicle");
    const std::string call = PARAMETER_OF("VEHICLE", "KIND=\"VEHICLE\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t")
        PARAMETER_OF("CHANNEL", "KIND=\"VHC_INPUT\"\n\t\t\t\tVALUE=\"0\"\n\t\t\t");
    std::string model = Replaced(contentOf(kExamples + kModel), "LABEL=\"Stop\"\n\t\t\tCODE=\"1\"\n",
                                 "LABEL=\"Stop\"\n\t\t\tCODE=\"1\"\n" + call);
    const std::string first = "\t\tTYPEOF PARAMETER (STATE)\n\t\t{\n\t\t\tLABEL";
    model = Replaced(model, first,
                     "\t\tTYPEOF PARAMETER (CHANNEL)\n\t\t{\n\t\t\tTYPE=\"INTEGER\"\n\t\t\tUSAGE=\"BY_VALUE\"\n"
                     "\t\t\tKINDLIST=\"VHC_INPUT\"\n\t\t}\n" +
                         first);
    std::string script = Script({});
    script.insert(script.rfind('}'), RULE_OF("9", "STOP", ""));
    script = Replaced(script, "TYPEOF ACTION (STOP)\n\t\t{\n", "TYPEOF ACTION (STOP)\n\t\t{\n" + call);
    const Job job{folder + "/planted.sce", FileKind::Scenario, folder + "/tavrel.xml", "Faults"};
    std::ofstream(job.path, std::ios::binary)
        << Replaced(File(script, Form::Plain, false, false), "</Vehicle>", "  <Input></Input>\n    </Vehicle>");
    for (const bool isBroken : {false, true}) {
        std::ofstream(folder + kModel, std::ios::binary)
            << Replaced(model, "KINDLIST=\"VEHICLE\"", isBroken ? "KINDLIST=\"VEHICEL\"" : "KINDLIST=\"VEHICLE\"");
        std::vector<std::string> found;
        for (const Finding& finding : Check({job}, {}).findings) found.emplace_back(finding.rule->id);
        EXPECT_EQ(found, isBroken ? std::vector<std::string>{"TV1019"} : std::vector<std::string>());
    }
}

// The model is read all the same, so the script is what the library refuses.
TEST(PlantedTest, ADefinitionThatIsReadWithAnotherNameIsMissedWhereItIsUsed) {
    const std::string folder = CopyOfExamples("renamed_model");
    const std::string model = contentOf(kExamples + kModel);
    struct Row {
        const char* find;
        const char* replacement;
        const char* rule;
        const char* inScript;
        const char* use;
    };
    const Row rows[] = {
        {"ACTION (PAINT)", "ACTION (PAINT", "TV2001", "ELSE_ACTION (PAINT)", "ELSE_ACTION (@<PAINT>@)"},
        {"ENUM (GREEN)", "ENUM  (GREEN)", "TV2008", "VALUE=\"RED\"", "VALUE=\"@<GREEN>@\""},
    };
    for (const Row& row : rows) {
        std::ofstream(folder + kModel, std::ios::binary) << Replaced(model, row.find, row.replacement);
        std::string scenario = File(Script({}), Form::Plain, false, false);
        scenario.replace(scenario.find(row.inScript), std::string(row.inScript).size(),
                         Replaced(Replaced(row.use, "@<", kBegin), ">@", kEnd));
        const std::vector<Span> spans = TakeMarks(scenario);
        const std::string path = folder + "/planted.sce";
        std::ofstream(path, std::ios::binary) << scenario;
        std::vector<std::string> found;
        for (const Finding& finding :
             Check({{path, FileKind::Scenario, folder + "/tavrel.xml", "Faults"}}, {}).findings)
            if (finding.severity == kError) found.push_back(Text(finding.rule->id, finding.severity, finding.span));
        EXPECT_EQ(found, std::vector<std::string>{Text(row.rule, kError, spans.at(0))}) << row.replacement;
    }
}

} // namespace
