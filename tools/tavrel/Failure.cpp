#include "Failure.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <new>
#include <string_view>

#include <Poco/Exception.h>
#include <ScenarioTemplateDb/Exception.h>
#include <scenario/NearestName.h>

#include "report/ShownText.h"

namespace tavrel {

Failure CurrentFailure() {
    using ScenarioTemplateDb::Exception;
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const Exception& exception) {
        return {ExitUnreadable, PlacedLine(exception.message)};
    } catch (Exception* exception) {
        const std::unique_ptr<Exception> owned(exception);
        return {ExitUnreadable, OneLine(owned->message)};
    } catch (const Poco::Exception& exception) {
        return {ExitUnreadable, OneLine(exception.displayText())};
    } catch (const std::bad_alloc&) {
        return {ExitUnreadable, "there is not enough memory to read it"};
    } catch (const std::exception& exception) {
        return {ExitUnreadable, PlacedLine(exception.what())};
    } catch (...) {
        return {ExitUnreadable, "something failed in a form that nobody announced"};
    }
}

std::string OneLine(const std::string& message) {
    if (IsShownAsItIs(message) && !message.ends_with(' ')) return message;
    std::string line;
    for (const char c : message) {
        // The marks of the library's log stand at the beginnings of lines.
        const bool separates = std::string_view("\n\r\t\1\2\3\4").find(c) != std::string_view::npos;
        if (!separates)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    return ShownText(line);
}

std::string Printable(const std::string& text) {
    std::string result;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        result += (begin > 0 ? "\n" : "") + OneLine(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

std::string PlacedLine(const std::string& message) {
    std::string line = OneLine(message);
    const std::size_t row = line.find(":0: ");
    return row == std::string::npos ? line : line.erase(row, 2);
}

std::string DidYouMean(const std::string& name, const std::vector<std::string>& known) {
    const std::string near = NearestName(name, known);
    return near.empty() ? near : ", did you mean \"" + near + "\"";
}

void Report(const std::string& sentence) {
    const std::string line = "tavrel: " + ShownText(sentence) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

} // namespace tavrel
