#ifndef SCENARIO_ITEMTEXT_H
#define SCENARIO_ITEMTEXT_H

// The text format below the items: kinds and their words, the lines of a text, lists of words, paths.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include <scenario/Export.h>

// What an item is. The numbers are part of the interface; the keyword of each is its word in the text format.
enum ScenarioItemKind : std::uint32_t {
    KindNone,
    KindAction,
    KindElseAction,
    KindCatalog,
    KindCondition,
    KindConfig,
    KindCriteria,
    KindEnum,
    KindEnumTab,
    KindEvaluation,
    KindExerciseLog,
    KindExerciseNdx,
    KindFolder,
    KindFunction,
    KindGeneralParameters,
    KindGroup,
    KindHistory,
    KindInclude,
    KindModifier,
    KindParameter,
    KindProgram,
    KindReturn,
    KindRule,
    KindScenario,
    KindSessionLog,
    KindTask,
    KindToken,
    KindVariable
};

// The keyword of a kind; empty for a number that is none. The text is static.
TAVREL_MODEL_API const char* KindKeyword(std::uint32_t kind);
// KindNone for an empty or unknown keyword; upper and lower case differ.
TAVREL_MODEL_API ScenarioItemKind KindFromKeyword(const std::string& keyword);

// The reader's place in a text. The text ends with a NUL, belongs to the caller and must outlive the stream. The reader
// never looks after `end` nor, within a value, after a NUL.
class TAVREL_MODEL_API ScenarioTextStream {
public:
    const char* begin;
    const char* end; // one past the last byte counted; whether the final NUL is counted makes no difference
    const char* cursor;
    std::uint32_t line = 1; // row of the cursor; only line feeds count

    // Leaves the cursor on the first byte that is no separator. A null text is a fatal assertion.
    ScenarioTextStream(const char* text, std::size_t length);
};

// Reads "TYPEOF KEYWORD (name)" at the cursor without moving it. True with KindNone for an unknown keyword. A keyword
// of 256 characters and a name of 512 are too long.
TAVREL_MODEL_API bool ReadHeader(const ScenarioTextStream& stream, ScenarioItemKind& kind, std::string& name);
// Reads the value when the line at the cursor begins with `key`; nothing is checked after the key, so a class with
// keys of which one begins the other must mind their order. Does not move the cursor.
TAVREL_MODEL_API bool ReadStringAttribute(const ScenarioTextStream& stream, const char* key, std::string& value);
// Moves to the next line: the rest of this one is whatever stands before the next tab or line end.
TAVREL_MODEL_API void NextLine(ScenarioTextStream& stream);
// Moves on while `scenarioDepth` is above 0, counting braces at line starts. An unterminated block ends at the end of
// the text with `scenarioDepth` still above 0.
TAVREL_MODEL_API void SkipBlock(ScenarioTextStream& stream);

// What a failed read puts on the log after its severity: "SOURCE - row R:", a line feed and the failing line.
TAVREL_MODEL_API std::string LoadFailureText(const std::string& source, const ScenarioTextStream& stream);

TAVREL_MODEL_API void WriteHeader(std::ostream& out, std::uint32_t kind, const std::string& name);
// Writes one attribute line, the value as it stands: a double quote in it is not protected. Null writes nothing.
TAVREL_MODEL_API void WriteAttribute(std::ostream& out, const char* key, const char* value);
TAVREL_MODEL_API void WriteAttribute(std::ostream& out, const char* key, const std::string& value);

// Appends the words of a list attribute, which any white space parts.
TAVREL_MODEL_API void SplitWords(const std::string& value, std::vector<std::string>& words);
// The words with single blanks between them.
TAVREL_MODEL_API std::string JoinWords(const std::vector<std::string>& words);
// The same into a buffer of 1024 bytes; what does not fit is cut.
TAVREL_MODEL_API void JoinWords(const std::vector<std::string>& words, char* buffer);

// Paths are stored with backslashes. Every "/" becomes "\" but one at the very front, and runs of backslashes become
// one, but for a double one at the front.
TAVREL_MODEL_API void NormalizePath(std::string& path);
// What stands after the last separator of either form; null gives the empty text.
TAVREL_MODEL_API std::string FileNameOf(const char* path);
TAVREL_MODEL_API std::string FileNameOf(const std::string& path);
// Replaces `directory` by the path of `file` under it in the data path of the current configuration, or by what the
// environment makes of the two joined when there is no such file. A null `file` resolves the directory alone.
TAVREL_MODEL_API void ResolveDataPath(const char* file, std::string& directory);
TAVREL_MODEL_API void ResolveDataPath(const std::string& file, std::string& directory);
// The path of the parameters file beside a scenario: the last two characters give way to "par".
TAVREL_MODEL_API std::string ParameterFileOf(const std::string& path);

// State of the process, unprotected: one call at a time.
// Where messages go; each load entry sets it, and it stays set for the messages of running scenarios. May be null.
TAVREL_MODEL_API extern std::ostream* scenarioLog;
// Indentation of the writer and brace balance of the skipping reader; 0 between calls.
TAVREL_MODEL_API extern std::int32_t scenarioDepth;

#endif
