#include "ScenarioWriter.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <Commons/WholeFile.h>
#include <cfg/Scenario.h>
#include <cfg/ScenarioText.h>

#include "../Commons/Xml.h"
#include "Document.h"
#include "ValueText.h"
#include "XmlText.h"

namespace cfg::detail {

namespace {

using Commons::detail::IsXmlBlank;
using Commons::detail::TrimmedXml;
using Commons::detail::XmlFault;

constexpr std::string_view kStep = "  ";

// How the writing ends where a value cannot be written. Nothing of it leaves this unit.
struct Unwritable {
    XmlFault fault;
};

// A forbidden character as its number.
std::string PointText(std::string_view text, size_t at) {
    if (text[at] == '\xEF') return text[at + 2] == '\xBE' ? "FFFE" : "FFFF";
    return std::string("00") + (text[at] < '\x10' ? "0" : "1") + "0123456789ABCDEF"[text[at] & 0xF];
}

bool IsText(const Value& value) {
    return value.type != t_ParameterTypeBoolean && value.type != t_ParameterTypeInteger &&
           value.type != t_ParameterTypeReal && value.text;
}

// The value as text, once it is certain that the file can hold it.
std::string WritableText(const Value& value) {
    // Before several copies of it take the memory.
    if (IsText(value) && value.text->size() > Commons::kLargestFile) throw Unwritable{XmlFault{0, kTooLargeToSave}};
    std::string text = FormatValue(value);
    // Rows are counted from the begin of the file, so only for a complaint.
    const auto row = [&] {
        return value.place == kNotInFile ? 0 : Commons::detail::RowAt(value.document->source, value.place);
    };
    const std::string tag = "<" + *value.name + ">";
    const size_t forbidden = Commons::detail::FindForbiddenCharacter(text);
    if (forbidden != std::string::npos) {
        const std::string point = PointText(text, forbidden);
        throw Unwritable{
            XmlFault{row(), "not saved: " + tag + " holds the character U+" + point + ", which no XML can hold"}};
    }
    if (value.document->isInOtherEncoding &&
        std::any_of(text.begin(), text.end(), [](char c) { return (c & '\x80') != 0; }))
        throw Unwritable{
            XmlFault{row(), "not saved: the file declares another encoding than UTF-8, so the new text of " + tag +
                                " can hold ASCII characters only; convert the file to UTF-8"}};
    return text;
}

// What replaces the bytes from `begin` to `end`.
struct Edit {
    size_t begin;
    size_t end;
    std::string text;
};

// What replaces a part of a text.
struct LineChange {
    size_t begin;
    size_t end;
    std::string_view text;
};

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

bool IsInsideCharacter(std::string_view text, size_t position) {
    return position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80;
}

// What differs between two lines, in whole characters.
LineChange Narrowed(size_t begin, std::string_view before, std::string_view after) {
    const size_t shorter = std::min(before.size(), after.size());
    size_t head = 0;
    while (head < shorter && before[head] == after[head]) ++head;
    while (head > 0 && (IsInsideCharacter(before, head) || IsInsideCharacter(after, head))) --head;
    size_t tail = 0;
    while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
    while (tail > 0 && IsInsideCharacter(before, before.size() - tail)) --tail;
    return {begin + head, begin + before.size() - tail, after.substr(head, after.size() - tail - head)};
}

// The changes from one text to the other, line by line: lines that were put in or taken out one at a time are seen as
// that.
std::vector<LineChange> LineChanges(std::string_view before, std::string_view after) {
    const std::vector<std::string_view> former = LinesOf(before), lines = LinesOf(after);
    std::vector<LineChange> changes;
    const auto position = [&](size_t row) {
        return row < former.size() ? static_cast<size_t>(former[row].data() - before.data()) : before.size();
    };
    size_t i = 0, j = 0;
    while (i < former.size() || j < lines.size()) {
        const size_t left = former.size() - i, wanted = lines.size() - j;
        if (left > 0 && wanted > 0 && former[i] == lines[j]) {
            ++i;
            ++j;
        } else if (wanted > left && (left == 0 || (wanted > 1 && former[i] == lines[j + 1]))) {
            changes.push_back({position(i), position(i), lines[j++]});
        } else if (left > wanted && (wanted == 0 || (left > 1 && former[i + 1] == lines[j]))) {
            changes.push_back({position(i), position(i + 1), {}});
            ++i;
        } else {
            changes.push_back(Narrowed(position(i), former[i], lines[j]));
            ++i;
            ++j;
        }
    }
    return changes;
}

void ReplaceAll(std::string& text, std::string_view what, std::string_view by) {
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

// A section that the file does not hold yet. `line` is what begins each line at its level: a line end and blanks, or
// nothing to write all in one line.
class NewSectionWriter {
public:
    NewSectionWriter(std::string& target, std::string_view indentation) : out(target), step(indentation) {}

    void Write(Section& section, const std::string& line) {
        const std::string name = section.getName();
        const std::string inner = line.empty() ? line : line + std::string(step);
        out += "<" + name;
        const size_t afterName = out.size();
        out += ">";
        const size_t afterTag = out.size();
        for (Value* value = Access::ParametersOf(section); value; value = value->next) {
            out += inner;
            WriteParameter(*value);
        }
        for (Value* value = Access::FieldsOf(section); value; value = value->next) {
            out += inner;
            WriteTextField(*value);
        }
        for (Section* subSection : Access::SubSectionsOf(section)) {
            out += inner;
            Write(*subSection, inner);
        }
        if (out.size() == afterTag)
            out.replace(afterName, 1, "/>");
        else
            out += line + "</" + name + ">";
    }

    void WriteParameter(const Value& value) {
        out += "<" + *value.name + " ScenarioTreeValue=\"" + EscapedAttribute(WritableText(value), '"') + "\"/>";
    }

    void WriteTextField(const Value& value) {
        const std::string text = EscapedText(WritableText(value));
        out += text.empty() ? "<" + *value.name + "/>" : "<" + *value.name + ">" + text + "</" + *value.name + ">";
    }

private:
    std::string& out;
    std::string_view step;
};

// Compares the tree with the file and gathers what has to be written into it.
class Writer {
public:
    explicit Writer(const Document& scenario) : source(scenario.source) {
        CompareSection(*scenario.Root(), RootStep(*scenario.Root()));
        for (const size_t place : scenario.removedPlaces) Remove(place);
    }

    std::string Apply() {
        // An insertion comes before a removal at the same place. What was changed or removed inside of something that
        // was removed itself is gone with it.
        std::stable_sort(edits.begin(), edits.end(), [](const Edit& left, const Edit& right) {
            return left.begin != right.begin ? left.begin < right.begin : left.end < right.end;
        });
        std::string out;
        size_t done = 0;
        for (const Edit& edit : edits) {
            if (edit.begin < done) continue;
            out.append(source, done, edit.begin - done);
            out += edit.text;
            done = edit.end;
        }
        return out.append(source, done, std::string::npos);
    }

private:
    // `step` is by how much an element is indented beyond the one around it.
    void CompareSection(Section& section, std::string_view step) {
        for (const Value* value = Access::ParametersOf(section); value; value = value->next)
            if (value->place != kNotInFile) CompareParameter(*value);
        for (const Value* value = Access::FieldsOf(section); value; value = value->next)
            if (value->place != kNotInFile) CompareTextField(*value);

        std::vector<Section*> added;
        for (Section* subSection : Access::SubSectionsOf(section)) {
            if (Access::PlaceOf(*subSection) == kNotInFile)
                added.push_back(subSection);
            else
                CompareSection(*subSection, StepBetween(section, *subSection, step));
        }
        if (HasUnwritten(section) || !added.empty()) Complete(section, added, step);
    }

    void CompareParameter(const Value& value) {
        const size_t end = AttributeEnd(source, value.place);
        const char quote = source[value.place - 1];
        if (HoldsText(value.type)) {
            if (!value.text || *value.text == AttributeText(source, value.place)) return;
        } else if (!IsChangedNumber(value)) {
            return;
        }
        edits.push_back({value.place, end, EscapedAttribute(WritableText(value), quote)});
    }

    void CompareTextField(const Value& value) {
        if (!HoldsText(value.type) && !IsChangedNumber(value)) return;
        const ElementText content = ReadElementText(source, value.place);
        if (HoldsText(value.type) && FormatValue(value) == content.text) return;
        const std::string text = WritableText(value);

        const ElementExtent element = FindElement(source, value.place);
        if (element.isEmptyTag) {
            const size_t slash = element.end - 2;
            edits.push_back({slash, element.end, ">" + EscapedText(text) + "</" + *value.name + ">"});
        } else if (content.pieces.empty()) {
            edits.push_back({element.contentBegin, element.contentBegin, EscapedText(text)});
        } else if (!ChangeLines(WrittenText::Between(source, element.contentBegin, element.contentEnd), text)) {
            // Comments between pieces of text stay; the whole new text stands where the first piece stood.
            const bool keepsCData =
                content.isOneCData && text.find("]]>") == std::string::npos && text.find('\r') == std::string::npos;
            const auto [begin, end] = content.pieces.front();
            edits.push_back({begin, end, keepsCData ? "<![CDATA[" + text + "]]>" : EscapedText(text)});
            for (size_t i = 1; i < content.pieces.size(); ++i)
                edits.push_back({content.pieces[i].first, content.pieces[i].second, ""});
        }
    }

    // Writes only the lines that differ, and of these only what differs, so that all else of a script keeps its bytes.
    // False, and no edit, where a change would touch more than characters.
    bool ChangeLines(const WrittenText& written, const std::string& text) {
        const size_t former = edits.size();
        for (const LineChange& change : LineChanges(written.Text(), text)) {
            const auto [begin, end] = written.InFile(change.begin, change.end);
            const std::string_view replaced = std::string_view(source).substr(begin, end - begin);
            std::string bytes;
            const bool crosses = replaced.find("<!") != std::string_view::npos ||
                                 replaced.find("<?") != std::string_view::npos ||
                                 replaced.find("]]>") != std::string_view::npos;
            if (!written.Write(change.text, change.begin, change.end, bytes) || crosses) {
                edits.resize(former);
                return false;
            }
            // A reader of scenario files leaves a carriage return as it is; where others stand, so does this.
            if (written.Text().find("\r\n") != std::string::npos && source.find("\r\n") != std::string::npos)
                ReplaceAll(bytes, "&#13;\n", "\r\n");
            edits.push_back({begin, end, std::move(bytes)});
        }
        return true;
    }

    // Takes an element out with the line that it stands in.
    void Remove(size_t place) {
        const ElementExtent element = FindElement(source, place);
        edits.push_back({element.begin - LineStart(source, element.begin).size(), element.end, ""});
    }

    // A value that the class declares, that the file leaves out and that is no longer what this means.
    static bool IsUnwritten(const Value& value) {
        if (value.place != kNotInFile) return false;
        return HoldsText(value.type) ? value.text && !value.text->empty() : IsChangedNumber(value);
    }

    static bool HasUnwritten(Section& section) {
        for (const Value* chain : {Access::ParametersOf(section), Access::FieldsOf(section)})
            for (const Value* value = chain; value; value = value->next)
                if (IsUnwritten(*value)) return true;
        return false;
    }

    // Puts in what is missing from a section of the file: values after the one declared before them, sections last.
    void Complete(Section& section, const std::vector<Section*>& added, std::string_view step) {
        const ElementExtent element = FindElement(source, Access::PlaceOf(section));
        const std::string line = LineOfChildren(element, step);
        std::string inserted;
        NewSectionWriter writer(inserted, step);
        size_t position = element.contentBegin;
        const bool isBlank = TrimmedXml(ContentOf(element)).empty();
        const auto flush = [&] {
            if (!isBlank && !inserted.empty()) edits.push_back({position, position, std::exchange(inserted, {})});
        };

        WalkValues(Access::ParametersOf(section), [&](const Value& value) {
            if (value.place != kNotInFile) {
                flush();
                position = FindElementEnd(source, AttributeEnd(source, value.place) + 1);
            } else if (IsUnwritten(value)) {
                inserted += line;
                writer.WriteParameter(value);
            }
        });
        WalkValues(Access::FieldsOf(section), [&](const Value& value) {
            if (value.place != kNotInFile) {
                flush();
                position = FindElement(source, value.place).end;
            } else if (IsUnwritten(value)) {
                inserted += line;
                writer.WriteTextField(value);
            }
        });
        flush();
        for (Section* subSection : added) {
            inserted += line;
            writer.Write(*subSection, line);
        }
        if (isBlank) {
            FillBlank(section, element, inserted);
        } else {
            position = element.contentEnd;
            while (IsXmlBlank(source[position - 1])) --position;
            flush();
        }
    }

    // Gives an element its first content.
    void FillBlank(Section& section, const ElementExtent& element, const std::string& content) {
        const std::string closingLine(LineStart(source, element.begin));
        if (!element.isEmptyTag) {
            edits.push_back({element.contentBegin, element.contentEnd, content + closingLine});
            return;
        }
        size_t begin = element.end - 2; // at "/>"
        while (IsXmlBlank(source[begin - 1])) --begin;
        edits.push_back({begin, element.end, ">" + content + closingLine + "</" + section.getName() + ">"});
    }

    template <typename Visit>
    static void WalkValues(const Value* value, Visit visit) {
        for (; value; value = value->next) visit(*value);
    }

    std::string_view ContentOf(const ElementExtent& element) const {
        return std::string_view(source).substr(element.contentBegin, element.contentEnd - element.contentBegin);
    }

    // What begins the line of each child of an element, as its first child shows it.
    std::string LineOfChildren(const ElementExtent& element, std::string_view step) const {
        const std::string_view content = ContentOf(element);
        if (!TrimmedXml(content).empty()) {
            size_t first = 0;
            while (IsXmlBlank(content[first])) ++first;
            return std::string(LineStart(source, element.contentBegin + first));
        }
        const std::string own(LineStart(source, element.begin));
        return own.empty() ? own : own + std::string(step);
    }

    std::string_view StepBetween(Section& outer, Section& inner, std::string_view known) const {
        const std::string_view outerLine = LineStart(source, Access::PlaceOf(outer) - 1);
        const std::string_view innerLine = LineStart(source, Access::PlaceOf(inner) - 1);
        if (outerLine.empty() || innerLine.size() <= outerLine.size() || !innerLine.starts_with(outerLine))
            return known;
        return innerLine.substr(outerLine.size());
    }

    // The root stands one step deep.
    std::string_view RootStep(Section& root) const {
        const std::string_view line = LineStart(source, Access::PlaceOf(root) - 1);
        const size_t blanks = line.find_first_of(" \t");
        return blanks == std::string_view::npos ? kStep : line.substr(blanks);
    }

    const std::string& source;
    std::vector<Edit> edits;
};

std::string WriteAnew(const Document& document) {
    std::string out = "<sce version=\"1\">\n  ";
    NewSectionWriter(out, kStep).Write(*document.Root(), "\n  ");
    return out + "\n</sce>\n";
}

} // namespace

std::optional<Commons::detail::XmlFault> WriteScenario(const Document& document, std::string& bytes) {
    try {
        bytes = document.source.empty() ? WriteAnew(document) : Writer(document).Apply();
        return std::nullopt;
    } catch (const Unwritable& unwritable) {
        return unwritable.fault;
    }
}

} // namespace cfg::detail
