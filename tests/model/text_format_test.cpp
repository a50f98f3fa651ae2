// The reader and the writer: lines, blocks, files, refusals with their rows, and what is told of them.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include <sys/stat.h>

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <scenario/ItemModel.h>
#include <support/ModelText.h>
#include <support/RandomTest.h>

#include "text/ByteGroup.h"

namespace {

using testing::ElementsAre;

// One of everything that needs no definition. The first line is empty, as the writer has it.
const std::string kEverything = "\n" + ScriptText(R"(
    TYPEOF FOLDER (root)
    {
        IS_SELECTED="1"
        IS_EXPANDED="1"
        LABEL="Root, of all"

        TYPEOF FOLDER (ENUMTAB_LIST)
        {
            LABEL=""

            TYPEOF ENUMTAB (sides)
            {
                LABEL="Sides"

                TYPEOF ENUM (0)
                {
                    LABEL="left"
                    TYPE="INTEGER"
                    VALUE="0"
                    INTERACTIVE_TYPE="VOID"
                    IS_INITIALIZATION_NEEDED_AT_START="0"
                    INTERACTIVE_MIN_VALUE="0"
                    INTERACTIVE_MAX_VALUE="9999"
                    INTERACTIVE_STEP_VALUE="0.10000000000000001"
                    CATEGORY="INTERNAL"
                }
            }
        }

        TYPEOF CONFIG (settings)
        {
            ISA_INDEX="1"
            REQUEST_DELAY="1"
            WAITMSG_DELAY="500"
            UPDATE_DELAY="1"
            NUMOF_UNDOS="5"
            STUDENT=""
            TRAINING="a b"
            EVALUATION=""
            SESSION=""
            HISTORY=""
        }

        TYPEOF PROGRAM (p (1)
        {
            LABEL="umlaut )" + std::string("\xE4\x01\x0B") +
                                                  R"("

            TYPEOF GROUP (g)
            {
                LABEL=""
            }
        }

        TYPEOF TASK (0)
        {
            LABEL=""
            TASK_KIND="0"

            TYPEOF RULE (0)
            {
                LABEL=""
            }
        }
    }
)");

TEST(Writer, ItsTextReadsBackByteForByte) {
    const ReadResult read = ReadExactly(kEverything);
    ASSERT_TRUE(read.item) << "row " << read.row;
    EXPECT_EQ(SavedText(*read.item), kEverything);
    EXPECT_EQ(scenarioDepth, 0);
    const OwnedItem copy(read.item->Clone());
    // A clone of a CONFIG keeps none of its settings.
    EXPECT_NE(SavedText(*copy), kEverything);
    ScenarioItem* settings = copy->FindFirstOfKind(KindConfig);
    EXPECT_EQ(SavedText(*settings), "\nTYPEOF CONFIG (settings)\n{\n\tISA_INDEX=\"1\"\n\tREQUEST_DELAY=\"\"\n"
                                    "\tWAITMSG_DELAY=\"\"\n\tUPDATE_DELAY=\"\"\n\tNUMOF_UNDOS=\"\"\n\tSTUDENT=\"\"\n"
                                    "\tTRAINING=\"\"\n\tEVALUATION=\"\"\n\tSESSION=\"\"\n\tHISTORY=\"\"\n}\n");
}

TEST(Writer, LeavesOutTheChildrenOfAnIndexEntryAndTheNameOfTheNameless) {
    const OwnedItem folder(CreateItem(KindFolder, "", nullptr));
    folder->AddChild(CreateItem(KindFolder, "hidden", nullptr), nullptr, true);
    folder->isaIndex = "1";
    folder->isSelected = "yes"; // not "1", so not true
    EXPECT_EQ(SavedText(*folder), "\nTYPEOF FOLDER\n{\n\tISA_INDEX=\"1\"\n\tLABEL=\"\"\n}\n");
    const OwnedItem task(CreateItem(KindTask, "0", nullptr));
    task->isaIndex = "1";
    EXPECT_EQ(SavedText(*task), "\nTYPEOF TASK (0)\n{\n\tISA_INDEX=\"1\"\n\tTASK_KIND=\"0\"\n}\n");

    std::ostringstream out;
    WriteAttribute(out, "KEY", nullptr);
    WriteAttribute(out, "KEY", "a\"b");
    scenarioDepth = 20;
    WriteAttribute(out, "KEY", std::string());
    scenarioDepth = 0;
    EXPECT_EQ(out.str(), "KEY=\"a\"b\"\n" + std::string(20, '\t') + "KEY=\"\"\n");
}

// What classes of a host throw passes, and leaves nothing behind.
TEST(Writer, StandsAtTheMarginAfterAThrow) {
    struct Thrower : Folders {
        void SaveAttributes(std::ostream&) const override { throw std::runtime_error("host"); }
    };
    Folders root;
    root.kind = KindFolder;
    auto* const thrower = new Thrower;
    thrower->kind = KindFolder;
    root.AddChild(thrower, nullptr, true);
    EXPECT_THROW(SavedText(root), std::runtime_error);
    EXPECT_EQ(scenarioDepth, 0);
}

TEST(Reader, TellsTheRefusalAlsoWhereTheParentThrows) {
    struct Keeper : Folders {
        void RemoveChild(ScenarioItem*) override { throw std::runtime_error("host"); }
    };
    Keeper parent;
    parent.kind = KindFolder;
    const std::string text = "TYPEOF FOLDER (new)\n{\nwrong\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size());
    EXPECT_EQ(LoadScenarioText(stream, &parent, nullptr, nullptr, false), nullptr);
    EXPECT_EQ(parent.children.size(), 1U) << "what its parent keeps is the parent's";
}

TEST(Words, AreSplitAtAnyWhiteSpaceAndJoinedByBlanks) {
    std::vector<std::string> words{"first"};
    SplitWords(" \tUSER\v VARIABLE\r\n", words);
    EXPECT_THAT(words, ElementsAre("first", "USER", "VARIABLE"));
    EXPECT_EQ(JoinWords(words), "first USER VARIABLE");
    EXPECT_EQ(JoinWords({}), "");
    EXPECT_EQ(JoinWords({"", "a", "", "b"}), " a  b"); // a host's list may hold empty words
    char buffer[1024];
    JoinWords({std::string(600, 'a'), std::string(600, 'b')}, buffer);
    EXPECT_EQ(std::string(buffer), std::string(600, 'a') + " " + std::string(422, 'b'));
}

TEST(Lines, EndAtTheFirstSeparator) {
    const std::string text = "\r\n\f\ta b\v\"\tc\r\n\n d";
    ScenarioTextStream stream(text.c_str(), text.size());
    const auto rest = [&] { return std::string(stream.cursor, stream.end); };
    EXPECT_EQ(rest(), "a b\v\"\tc\r\n\n d");
    EXPECT_EQ(stream.line, 2u);
    NextLine(stream);
    EXPECT_EQ(rest(), "c\r\n\n d");
    EXPECT_EQ(stream.line, 2u);
    NextLine(stream);
    EXPECT_EQ(rest(), " d");
    EXPECT_EQ(stream.line, 4u);
    for (int i = 0; i < 2; ++i) NextLine(stream);
    EXPECT_EQ(stream.cursor, stream.end);
}

// The reader looks at many bytes at once where there are so many: a text that it has to read alike with this after it.
const std::string kLineAfter = "\n" + std::string(70, 'x');

TEST(Headers, AreReadAsLenientlyAsEver) {
    const std::string name511(511, 'n');
    const std::string word255(255, 'W');
    struct {
        const char* why;
        std::string text;
        bool readable;
        ScenarioItemKind kind;
        std::string name;
    } const rows[] = {
        {"plain", "TYPEOF TASK (a)\n", true, KindTask, "a"},
        {"blanks and tabs in the name", "TYPEOF TASK (a b\tc\nd)", true, KindTask, "a b\tc\nd"},
        {"no name before a carriage return", "TYPEOF TASK\r\n(a)", true, KindTask, ""},
        {"a bare line feed does not end the word", "TYPEOF TASK\n{\n}\n", false, KindNone, ""},
        {"so the word goes on to the next blank", "TYPEOF TASK\n{\n\tLABEL=\"a bc)\"", true, KindNone, "c"},
        {"any character for the bracket", "TYPEOF TASK xa)", true, KindTask, "a"},
        {"the first bracket of () is part of the name", "TYPEOF TASK () b) c)", true, KindTask, ") b"},
        {"even a control character", "TYPEOF TASK \x01) b) c)", true, KindTask, ") b"},
        {"a tab does not end the word", "TYPEOF TASK\tS (a)", true, KindNone, "a"},
        {"text after the name", "TYPEOF TASK (a) and more", true, KindTask, "a"},
        {"an unknown word", "TYPEOF TASKS (a)", true, KindNone, "a"},
        {"the first character of the word is never its end", "TYPEOF  TASK (a)", true, KindNone, "a"},
        {"two blanks are not one", "TYPEOF\tTASK (a)", false, KindNone, ""},
        {"small letters", "Typeof TASK (a)", false, KindNone, ""},
        {"no closing bracket", "TYPEOF TASK (a", false, KindNone, ""},
        {"nothing after the bracket", "TYPEOF TASK (", false, KindNone, ""},
        {"nothing after the blank", "TYPEOF TASK ", false, KindNone, ""},
        {"nothing after the word", "TYPEOF TASK", false, KindNone, ""},
        {"nothing", "TYPEOF ", false, KindNone, ""},
        {"a NUL ends the search", std::string("TYPEOF TASK (a\0b)", 17), false, KindNone, ""},
        {"the longest name", "TYPEOF TASK (" + name511 + ")", true, KindTask, name511},
        {"one longer", "TYPEOF TASK (n" + name511 + ")", false, KindNone, ""},
        {"the longest word", "TYPEOF " + word255 + " (a)", true, KindNone, "a"},
        {"one longer", "TYPEOF W" + word255 + " (a)", false, KindNone, ""},
    };
    for (const auto& row : rows) {
        for (const std::string& after : {std::string(), kLineAfter}) {
            // A buffer of its own size, so that a checker sees a read after it.
            const std::string text = row.text + after;
            const std::vector<char> bytes(text.begin(), text.end());
            ScenarioTextStream stream(bytes.data(), bytes.size());
            ScenarioItemKind kind = KindNone;
            std::string name;
            EXPECT_EQ(ReadHeader(stream, kind, name), row.readable) << Why(row) << after;
            EXPECT_EQ(stream.cursor, stream.begin) << Why(row);
            if (!row.readable) continue;
            EXPECT_EQ(kind, row.kind) << Why(row) << after;
            EXPECT_EQ(name, row.name) << Why(row) << after;
        }
    }
}

TEST(Attributes, AreMatchedByPrefix) {
    struct {
        const char* why;
        std::string text;
        const char* key;
        const char* value; // null: no match
    } const rows[] = {
        {"plain", "FILE=\"x\"", "FILE", "x"},
        {"empty", "FILE=\"\"", "FILE", ""},
        {"a longer key is taken for a shorter one", "FILEDIR=\"x\"", "FILE", "R="},
        {"a shorter key is not", "FILE=\"x\"", "FILEDIR", nullptr},
        {"whatever stands after the key", "FILE x\"", "FILE", ""},
        {"separators within a value", "FILE=\"a\n\tb\"", "FILE", "a\n\tb"},
        {"no closing quote", "FILE=\"x", "FILE", nullptr},
        {"nothing after the key", "FILE", "FILE", nullptr},
        {"one character after the key", "FILE=", "FILE", nullptr},
        {"a blank before the key", " FILE=\"x\"", "FILE", nullptr},
        {"a NUL in the value", std::string("FILE=\"a\0b\"", 10), "FILE", nullptr},
    };
    for (const auto& row : rows) {
        for (const std::string& after : {std::string(), kLineAfter}) {
            const std::string text = row.text + after;
            const std::vector<char> bytes(text.begin(), text.end());
            ScenarioTextStream stream(bytes.data(), bytes.size());
            std::string value = "untouched";
            EXPECT_EQ(ReadStringAttribute(stream, row.key, value), row.value != nullptr) << Why(row) << after;
            EXPECT_EQ(value, row.value ? row.value : "untouched") << Why(row) << after;
            EXPECT_EQ(stream.cursor, stream.begin) << Why(row);
        }
    }
}

std::string Nested(int levels) {
    std::string text;
    for (int i = 0; i < levels; ++i) text += "TYPEOF FOLDER (f)\n{\n";
    for (int i = 0; i < levels; ++i) text += "}\n";
    return text;
}

TEST(Reader, RefusesWithTheRowOfTheCursorAndTheCause) {
    struct {
        const char* why;
        std::string text;
        std::uint32_t row;
        const char* cause;
    } const rows[] = {
        {"an empty text", "", 1, "there is no item in the text"},
        {"white space only", "\n\t\r\n\n", 4, "there is no item in the text"},
        {"no header", "\nhello\n", 2, "the text does not begin with the header of an item"},
        {"a class-less word", "TYPEOF MODIFIER (m)\n{\n}\n", 1, "\"MODIFIER\" is no kind of item"},
        {"an unknown word", "\n\nTYPEOF THING (t)\n{\n}\n", 3, "\"THING\" is no kind of item"},
        {"no brace at the end", "TYPEOF RULE (a)\n", 2, "the opening brace of RULE (a) is missing"},
        {"something else for the brace", "TYPEOF RULE (a)\nLABEL=\"\"\n", 2,
         "the opening brace of RULE (a) is missing"},
        {"cut short", "TYPEOF FOLDER (a)\n{\n\tLABEL=\"x\"\n", 4,
         "the text ends before the closing brace of FOLDER (a)"},
        {"indented by blanks", "TYPEOF FOLDER (a)\n{\n  LABEL=\"x\"\n}\n", 3,
         "the line begins with a blank; only tabs may stand before a line"},
        {"an unknown attribute", "TYPEOF FOLDER (a)\n{\nLABEL=\"x\"\nCOLOR=\"x\"\n}\n", 4,
         "FOLDER (a) has no attribute COLOR"},
        {"a second value", "TYPEOF FOLDER (a)\n{\nLABEL=\"x\"\nLABEL=\"y\"\n}\n", 4, "a second value for LABEL"},
        {"a second flag", "TYPEOF FOLDER (a)\n{\nISA_INDEX=\"0\"\nISA_INDEX=\"1\"\n}\n", 4,
         "a second value for ISA_INDEX"},
        {"no closing quote", "TYPEOF FOLDER (a)\n{\nLABEL=\"x\n}\n", 3, "the value of LABEL has no closing quote"},
        {"a tab in a value", "TYPEOF FOLDER (a)\n{\nLABEL=\"x\ty\"\n}\n", 3,
         "the line is neither an attribute of FOLDER (a) nor the header of an item"},
        {"a line end after a key", "TYPEOF FOLDER (a)\n{\nLABEL\n\"x\"\n}\n" + kLineAfter, 4,
         "the line is neither an attribute of FOLDER (a) nor the header of an item"},
        {"a NUL", std::string("TYPEOF FOLDER (a)\n{\n\0\n}\n", 24), 3, "a NUL character stands in the text"},
        {"a word that has no place here", "TYPEOF ENUMTAB (a)\n{\n\n\nTYPEOF VARIABLE (1)\n{\n\nVALUE=\"\"\n}\n}\n", 8,
         "ENUMTAB (a) takes no VARIABLE"},
        {"a nameless header with a bare line feed", "TYPEOF FOLDER\n{\n}\n", 1,
         "the header cannot be read: it needs one blank, a known word and a name in brackets, or a carriage return "
         "behind the word"},
        {"1,001 levels", Nested(1001), 2001, "blocks are nested more than 1000 deep"},
        {"no number", "TYPEOF TASK (0)\n{\nTASK_KIND=\"1x\"\n}\n", 3, "TASK_KIND \"1x\" is no whole number of 32 bits"},
        {"an unknown type", "TYPEOF VARIABLE (0)\n{\nTYPE=\"INT\"\n}\n", 3, "\"INT\" is not a word known here"},
    };
    for (const auto& row : rows) {
        LoadProblems causes;
        const ReadResult read = ReadExactly(row.text);
        EXPECT_FALSE(read.item) << Why(row);
        EXPECT_EQ(read.row, row.row) << Why(row);
        EXPECT_THAT(causes.told, ElementsAre(std::to_string(row.row) + ": " + row.cause)) << Why(row);
    }
}

TEST(Reader, KnowsNothingOfATextThatStoodInTheSamePlace) {
    std::string text = "TYPEOF FOLDER (a name)\n{\n}\n" + kLineAfter;
    const auto read = [&] {
        ScenarioTextStream stream(text.c_str(), text.size());
        return OwnedItem(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    };
    EXPECT_TRUE(read());
    text[text.find(' ', 15)] = '\t';
    EXPECT_FALSE(read());
}

TEST(Reader, TakesMoreThanTheWriterWrites) {
    struct {
        const char* why;
        std::string text;
        const char* saved;
    } const rows[] = {
        {"carriage returns, and no name", "TYPEOF FOLDER\r\n{\r\n\tLABEL=\"x\"\r\n}\r\n",
         "\nTYPEOF FOLDER\n{\n\tLABEL=\"x\"\n}\n"},
        {"lone carriage returns", "TYPEOF FOLDER (a)\r{\rLABEL=\"x\"\r}\r",
         "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"x\"\n}\n"},
        {"no line end at the end", "TYPEOF FOLDER (a)\n{\n}", "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"\"\n}\n"},
        {"text after brackets, braces and quotes", "TYPEOF FOLDER (a) z\n{ z\nLABEL=\"x\" z\n} z\n",
         "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"x\"\n}\n"},
        {"a whole item on one line of tabs", "TYPEOF FOLDER (a)\t{\tLABEL=\"x\"\t}",
         "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"x\"\n}\n"},
        {"an empty value leaves the key open", "TYPEOF FOLDER (a)\n{\nLABEL=\"\"\nLABEL=\"x\"\n}",
         "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"x\"\n}\n"},
        {"attributes after children", "TYPEOF FOLDER (a)\n{\nTYPEOF FOLDER (b)\n{\n}\nLABEL=\"x\"\n}",
         "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"x\"\n\n\tTYPEOF FOLDER (b)\n\t{\n\t\tLABEL=\"\"\n\t}\n}\n"},
        {"what follows the top item", "TYPEOF FOLDER (a)\n{\n}\n}}}}", "\nTYPEOF FOLDER (a)\n{\n\tLABEL=\"\"\n}\n"},
    };
    for (const auto& row : rows) {
        const ReadResult read = ReadExactly(row.text);
        ASSERT_TRUE(read.item) << Why(row);
        EXPECT_EQ(SavedText(*read.item), row.saved) << Why(row);
    }
    EXPECT_TRUE(ReadExactly(Nested(1000)).item);
}

// Words, names and values of any length, with any byte that ends no line, and between them whatever ends one.
TEST(Reader, FindsLinesOfAnyLengthAndCountsThem) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t bound) { return std::size_t{random()} % bound; };
    const auto anyText = [&](std::size_t longest) {
        std::string text = "n";
        for (std::size_t left = below(longest); left > 0; --left) text += "ab (1\v\x01\x7F\xE4\xFF"[below(10)];
        return text;
    };
    const std::string ends[] = {"\n", "\r\n", "\r", "\t", "\f", "\n\n", " z\n", "\n\t\f\t\n", "\n\r\n"};
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        std::string saved;
        const auto add = [&](const std::string& line, std::size_t depth) {
            text += line + ends[below(std::size(ends))] + std::string(below(2) == 0 ? depth : below(40), '\t');
            saved += std::string(depth, '\t') + line + "\n";
        };
        const auto folder = [&](std::size_t depth) {
            saved += "\n";
            add("TYPEOF FOLDER (" + anyText(40) + ")", depth);
            add("{", depth);
            add("LABEL=\"" + anyText(60) + "\"", depth + 1);
        };
        folder(0);
        for (std::size_t children = below(4); children > 0; --children) {
            folder(1);
            add("}", 1);
        }
        text += "BAD";
        const ReadResult refused = ReadExactly(text);
        EXPECT_FALSE(refused.item);
        ASSERT_EQ(refused.row, 1 + std::count(text.begin(), text.end(), '\n')) << text;
        text.resize(text.size() - 3);
        add("}", 0);
        const ReadResult read = ReadExactly(text);
        ASSERT_TRUE(read.item) << text;
        ASSERT_EQ(SavedText(*read.item), saved);
    }
}

TEST(Reader, LeavesTheCursorAfterTheItem) {
    const std::string text = "TYPEOF FOLDER (a)\n{\n}\n\nTYPEOF FOLDER (b)\n{\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size());
    const OwnedItem first(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    const OwnedItem second(LoadScenarioText(stream, nullptr, nullptr, nullptr, false));
    ASSERT_TRUE(first && second);
    EXPECT_EQ(second->name, "b");
    EXPECT_EQ(stream.cursor, stream.end);
}

// Every beginning of a good text is refused or is complete already, and nothing hangs or reads on.
TEST(Reader, SurvivesATextCutAtAnyByte) {
    const std::size_t complete = kEverything.rfind('}') + 1;
    for (const bool headerOnly : {false, true}) {
        for (std::size_t length = 0; length < kEverything.size(); ++length) {
            const std::vector<char> bytes(kEverything.begin(),
                                          kEverything.begin() + static_cast<std::ptrdiff_t>(length));
            ScenarioTextStream stream(bytes.empty() ? "" : bytes.data(), length);
            const OwnedItem item(LoadScenarioText(stream, nullptr, nullptr, nullptr, headerOnly));
            EXPECT_EQ(item != nullptr, length >= complete) << "cut at " << length;
            EXPECT_EQ(scenarioDepth, 0);
        }
    }
}

TEST(Reader, HeaderOnlyStopsAtTheFirstLineThatIsNoAttribute) {
    const ReadResult read = ReadExactly(kEverything, true);
    ASSERT_TRUE(read.item);
    EXPECT_EQ(read.item->label, "Root, of all");
    EXPECT_EQ(read.item->GetFirstChild(), nullptr);
    // OnLoadEnd is not called: the defaults of a CONFIG are missing. Braces within lines do not count.
    const ReadResult config = ReadExactly("TYPEOF CONFIG (c)\n{\nSTUDENT=\"s\"\nwhat\n{\nx}\n}\n}\n", true);
    ASSERT_TRUE(config.item);
    EXPECT_EQ(static_cast<Config&>(*config.item).student, "s");
    EXPECT_EQ(static_cast<Config&>(*config.item).updateDelay, "");
    EXPECT_EQ(config.row, 8u); // of the closing brace
    EXPECT_TRUE(ReadExactly("TYPEOF CONFIG (c)\n{\nSTUDENT=\"s\"\n}\n", true).item);
    EXPECT_FALSE(ReadExactly("TYPEOF CONFIG (c)\n{\n\nTYPEOF CONFIG (d)\n{\n}\n", true).item);
    EXPECT_EQ(scenarioDepth, 0);
}

TEST(Reader, AddsToAGivenParentOrLeavesItAsItWas) {
    const OwnedItem parent = ReadScript(R"(
        TYPEOF FOLDER (parent)
            TYPEOF FOLDER (old)
    )");
    const std::string before = SavedText(*parent);
    const auto read = [&](const std::string& text) {
        ScenarioTextStream stream(text.c_str(), text.size());
        return LoadScenarioText(stream, parent.get(), nullptr, nullptr, false);
    };
    EXPECT_EQ(read("TYPEOF FOLDER (new)\n{\nTYPEOF CONFIG (c)\n{\nTYPEOF FOLDER (x)\n{\n}\n}\nwrong\n}\n"), nullptr);
    EXPECT_EQ(SavedText(*parent), before);
    EXPECT_THROW(read("TYPEOF FOLDER (new)\n{\nTYPEOF VARIABLE (1)\n{\nINTERACTIVE_MIN_VALUE=\"1-\"\n}\n}\n"),
                 boost::bad_lexical_cast);
    EXPECT_EQ(SavedText(*parent), before);
    ScenarioItem* added = read("TYPEOF FOLDER (new)\n{\n}\n");
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->parent, parent.get());
    EXPECT_NE(SavedText(*parent), before);

    // A parameter forgets what it removes, so a refused call would be nobody's; a variable takes in nothing at all.
    const OwnedItem variable(CreateItem(KindVariable, "1", nullptr));
    const std::string text = "TYPEOF FOLDER (f)\n{\n}\n";
    ScenarioTextStream stream(text.c_str(), text.size());
    EXPECT_EQ(LoadScenarioText(stream, variable.get(), nullptr, nullptr, false), nullptr);
    EXPECT_EQ(stream.line, 3u);
}

TEST(Reader, PassesOverWhatAParentAcceptsButDoesNotTakeIn) {
    LoadProblems causes;
    const std::string text = ScriptText(R"(
        TYPEOF FOLDER (FUNCTION_LIST)
        {
            LABEL=""

            TYPEOF FUNCTION (F)
            {
                TYPEOF FUNCTION (F)
                {
                }
                LABEL="after"
            }
        }
    )");
    std::ostringstream log;
    ScenarioTextStream stream(text.c_str(), text.size());
    const OwnedItem root(LoadScenarioText(stream, nullptr, nullptr, &log, false));
    ASSERT_TRUE(root);
    EXPECT_EQ(root->GetFirstChild()->label, "after");
    EXPECT_EQ(root->GetFirstChild()->GetFirstChild(), nullptr);
    const std::string cause = "FUNCTION (F) is passed over: FUNCTION (F) does not take it in";
    EXPECT_EQ(log.str(), "\x03" + cause + ".\n");
    EXPECT_THAT(causes.told, ElementsAre("7 (warning): " + cause));
    scenarioLog = nullptr;
}

// A folder of its own for files, gone with the test.
class Files : public testing::Test {
protected:
    Files() : folder(std::filesystem::path(testing::TempDir()) / "model text") {
        std::filesystem::create_directories(folder);
    }
    ~Files() override { std::filesystem::remove_all(folder); }
    std::string Write(const std::string& name, const std::string& text) {
        const std::string path = (folder / name).string();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    // What is logged; `item` is what was read.
    std::string Load(const std::string& path) {
        std::ostringstream log;
        item.reset(LoadScenarioFile(path.c_str(), &log, false));
        EXPECT_EQ(scenarioLog, &log);
        scenarioLog = nullptr;
        return log.str();
    }
    std::filesystem::path folder;
    OwnedItem item;
};

TEST_F(Files, LoadWithOneMessageForEachFailure) {
    const std::string good = Write("gut \xC3\xA4.mdl", kEverything);
    EXPECT_EQ(Load(good), "");
    ASSERT_TRUE(item);
    EXPECT_EQ(SavedText(*item), kEverything);

    std::string backslashes = good;
    std::replace(backslashes.begin() + 1, backslashes.end(), '/', '\\');
    EXPECT_EQ(Load(backslashes), "");
    EXPECT_TRUE(item);

    const std::string missing = (folder / "missing").string();
    const std::string pipe = (folder / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {missing, pipe, folder.string(), std::string("/dev/null"), std::string()}) {
        EXPECT_EQ(Load(path), "\x01Unable to open file " + path + "\n");
        EXPECT_FALSE(item);
    }

    const std::string empty = Write("empty", "");
    EXPECT_EQ(Load(empty), "\x03"
                           "File " +
                               empty + " is empty.\n");
    EXPECT_FALSE(item);

    const std::string blank = Write("blank", "\n\n\t\n");
    EXPECT_EQ(Load(blank), "\x04" + blank + " - row 4:\n\n");

    const std::string wrong = Write("wrong", "TYPEOF FOLDER (a)\n{\n\tthe child's \"line\"\tx\n}\n");
    EXPECT_EQ(Load(wrong), "\x04" + wrong + " - row 3:\nthe child\n");

    const std::string longLine = Write("long", std::string(1000, 'x'));
    EXPECT_EQ(Load(longLine), "\x04" + longLine + " - row 1:\n" + std::string(255, 'x') + "\n");
}

TEST_F(Files, AreNamedToTheListener) {
    LoadProblems causes;
    const std::string wrong = Write("wrong", "TYPEOF FOLDER (a)\n{\n\twrong line\n}\n");
    Load(wrong);
    EXPECT_EQ(causes.last.file, wrong);
    EXPECT_EQ(causes.last.line, "wrong line");
    ReadExactly("x");
    EXPECT_EQ(causes.last.file, "");
    EXPECT_EQ(causes.last.line, "x");
    Load("nowhere");
    EXPECT_EQ(causes.last.file, "nowhere");
    EXPECT_EQ(causes.last.cause, "the file cannot be opened");
}

TEST(Reader, IsLinearInTheTextAtAnyShape) {
    // Minutes instead of moments, if any step looked at all that was read so far.
    std::string wide = "TYPEOF FOLDER (wide)\n{\n";
    for (int i = 0; i < 200000; ++i) wide += "TYPEOF FOLDER (f)\n{\n}\n";
    EXPECT_FALSE(ReadExactly(wide).item);
    EXPECT_TRUE(ReadExactly(wide + "}\n").item);

    std::string deep;
    for (int i = 0; i < 990; ++i) deep += "TYPEOF FOLDER (FUNCTION_LIST)\n{\n";
    for (int i = 0; i < 20000; ++i) deep += "TYPEOF FUNCTION (f" + std::to_string(i) + ")\n{\n}\n";
    for (int i = 0; i < 990; ++i) deep += "}\n";
    EXPECT_TRUE(ReadExactly(deep).item);

    const std::string large(20 * 1024 * 1024, 'x');
    const ReadResult read = ReadExactly("TYPEOF FOLDER (a)\n{\nLABEL=\"" + large + "\"\n}\n");
    ASSERT_TRUE(read.item);
    EXPECT_EQ(read.item->label, large);
    EXPECT_FALSE(ReadExactly("TYPEOF FOLDER (a)\n{\nLABEL=\"" + large).item);

    // The value of each of these lines is all that follows.
    std::string overlapping = "TYPEOF VARIABLE (0)\n{\n";
    for (int i = 0; i < 200000; ++i) overlapping += "CATEGORY\n";
    EXPECT_FALSE(ReadExactly(overlapping + "\"\n}\n").item);
}

// Readers on processors without the instructions have to give the same rows and the same texts.
TEST(ByteGroups, GiveTheSameWithInstructionsOfTheProcessorAndWithout) {
    std::mt19937 random(RandomSeed());
    for (int round = 0; round < 2000; ++round) {
        char text[ByteGroup::kSize];
        for (char& c : text) c = static_cast<char>(random() % (round % 2 == 0 ? 256 : 40));
        const ByteGroup group(text);
        const PlainByteGroup plain(text);
        const char c = round % 3 == 0 ? static_cast<char>(random() % 256) : text[random() % std::size(text)];
        ASSERT_EQ(group.Equal(c), plain.Equal(c)) << round;
        ASSERT_EQ(group.AtMost(c), plain.AtMost(c)) << round;
        ASSERT_EQ(group.Separators(), plain.Separators()) << round;
        for (std::size_t at = 0; at < std::size(text); ++at) {
            ASSERT_EQ((plain.Equal(c) >> at & 1) != 0, text[at] == c) << round;
            ASSERT_EQ((plain.Separators() >> at & 1) != 0, text[at] && std::strchr("\t\n\f\r", text[at])) << round;
        }
    }
}

} // namespace
