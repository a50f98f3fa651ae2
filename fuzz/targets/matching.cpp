// Headers, attributes, blocks and paths on their own. The parts of the input: an attribute's key, a text.

#include <array>
#include <cstring>

#include "../Items.h"
#include "../Support.h"

namespace {

// Offers every line to an item of each class.
void OfferLines(const char* begin, std::size_t length) {
    for (std::uint32_t kind = KindAction; kind <= KindVariable; ++kind) {
        Outlives([&] {
            const std::unique_ptr<ScenarioItem> item(CreateItem(kind, "1", nullptr));
            ScenarioTextStream stream(begin, length);
            while (stream.cursor < stream.end && *stream.cursor) {
                try {
                    item->LoadAttribute(stream);
                } catch (const std::bad_cast&) {
                }
                const char* const before = stream.cursor;
                NextLine(stream);
                Demand(stream.cursor > before, "a line has an end");
            }
        });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::string key = input.NextPart();
    const std::string text = input.Rest();
    const std::unique_ptr<char[]> exact(new char[text.size() + 1]);
    std::memcpy(exact.get(), text.c_str(), text.size() + 1);
    ResetModel(SampleRootModel());

    ScenarioTextStream stream(exact.get(), text.size());
    while (stream.cursor < stream.end && *stream.cursor) {
        std::string value;
        ReadStringAttribute(stream, key.c_str(), value);
        ScenarioItemKind kind = KindNone;
        std::string name;
        ReadHeader(stream, kind, name);
        NextLine(stream);
    }
    Demand(stream.cursor <= stream.end, "the cursor stays in the text");
    ScenarioTextStream block(exact.get(), text.size() + 1);
    scenarioDepth = 1;
    SkipBlock(block);
    Demand(block.cursor <= block.end, "the cursor stays in the text");
    scenarioDepth = 0;
    if (size < 2000) OfferLines(exact.get(), text.size() + 1);

    std::string path = text;
    NormalizePath(path);
    std::string again = path;
    NormalizePath(again);
    Demand(again == path, "a normal path stays as it is", path);
    Demand(FileNameOf(text).find_first_of("/\\") == std::string::npos, "a file name has no separator", text);
    ParameterFileOf(text);
    std::string directory = key;
    ResolveDataPath(text, directory);
    std::vector<std::string> words;
    SplitWords(text, words);
    std::array<char, 1024> buffer;
    JoinWords(words, buffer.data());
    std::vector<std::string> split;
    SplitWords(JoinWords(words), split);
    Demand(split == words, "words survive", text);
    return 0;
}
