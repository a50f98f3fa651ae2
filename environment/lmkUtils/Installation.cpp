#include "Installation.h"

#include <set>
#include <sstream>

#include <sys/stat.h>

#include <Commons/System.h>
#include <lmkUtils/ConfigurationError.h>

#include "../Commons/Files.h"
#include "../Commons/Xml.h"
#include "MomentFiles.h"

namespace lmkUtils::detail {

namespace {

using Commons::detail::TrimmedXml;
using Commons::detail::WithForwardSlashes;

constexpr const char* kConfigurationFile = "configuration.xml";

// An XML file with the name that its messages show.
class XmlFile {
public:
    XmlFile(const std::string& path, std::string shown) : shownPath(std::move(shown)) {
        text = OnceInAMoment(&MomentAnswers::bytes, path, [&] {
            std::string bytes;
            std::string reason;
            if (!Commons::detail::ReadPlainFile(path, bytes, reason)) Refuse(0, reason);
            return bytes;
        });
        if (const auto fault = document.Parse(text)) Refuse(fault->row, fault->reason);
    }

    // The top element, which must bear this name.
    pugi::xml_node Top(const std::string& name) const {
        const pugi::xml_node top = document.Top();
        if (top.name() != name) Refuse(top, "the top element is <" + std::string(top.name()) + ">, not <" + name + ">");
        return top;
    }

    [[noreturn]] void Refuse(pugi::xml_node element, const std::string& reason) const {
        Refuse(document.RowOf(element.name()), reason);
    }

    // An attribute that must be there with a text.
    std::string Attribute(pugi::xml_node element, const char* name) const {
        std::string value = element.attribute(name).value();
        if (value.empty()) Refuse(element, "<" + std::string(element.name()) + "> without a " + name);
        return value;
    }

private:
    [[noreturn]] void Refuse(size_t row, const std::string& reason) const {
        throw ConfigurationError(shownPath + ":" + std::to_string(row) + ": " + reason);
    }

    std::string shownPath;
    std::string text;
    Commons::detail::XmlDocument document;
};

std::string Expanded(const std::string& text) {
    std::string expanded;
    Commons::System::ExpandLocalEnvironmentVariables(text, expanded, Commons::System::DaemonVariableMatchingPattern,
                                                     {});
    return expanded;
}

// Whether "${NAME}" would be taken for a variable.
bool IsVariableName(const std::string& name) {
    std::string expanded;
    Commons::System::ExpandLocalEnvironmentVariables("${" + name + "}", expanded,
                                                     Commons::System::DaemonVariableMatchingPattern, {{name, ""}});
    return expanded.empty();
}

std::string FolderOf(const std::string& absolutePath) { return absolutePath.substr(0, absolutePath.rfind('/') + 1); }

bool IsRealFolder(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

XmlFile OpenConfiguration(const std::string& folder) {
    const std::string path = WithForwardSlashes(folder) + "/" + kConfigurationFile;
    return {path, path};
}

std::string TextOf(pugi::xml_node element) {
    std::string text;
    for (const pugi::xml_node piece : element) text += piece.value();
    return text;
}

Installation ParseInstallation(const std::string& path, const std::string& shownPath) {
    const XmlFile file(path, shownPath);
    Installation installation;
    std::set<std::string> names;
    for (const pugi::xml_node element : file.Top("tavrel").children()) {
        if (element.type() != pugi::node_element) continue;
        const std::string kind = element.name();
        if (kind == "pathVariable") {
            const std::string name = file.Attribute(element, "name");
            if (!IsVariableName(name)) file.Refuse(element, "\"" + name + "\" is no name of a variable");
            installation.pathVariables.push_back(name);
        } else if (kind == "configuration") {
            const std::string name = file.Attribute(element, "name");
            if (!names.insert(name).second) file.Refuse(element, "a second configuration \"" + name + "\"");
            const std::string folder = Expanded(file.Attribute(element, "path"));
            installation.configurations.push_back({name, AbsolutePath(folder, FolderOf(path))});
        } else {
            file.Refuse(element, "unknown element <" + kind + ">");
        }
    }
    return installation;
}

std::vector<std::string> ParseDataPath(const std::string& folder) {
    const XmlFile file = OpenConfiguration(folder);
    std::vector<std::string> roots;
    for (const pugi::xml_node root : file.Top("configuration").child("dataPath").children("root")) {
        const std::string text(TrimmedXml(TextOf(root)));
        if (text.empty()) file.Refuse(root, "<root> without a folder");
        roots.push_back(AbsolutePath(Expanded(text), folder));
    }
    return roots;
}

} // namespace

std::string AbsolutePath(const std::string& path, const std::string& folder) {
    const std::string forward = WithForwardSlashes(path);
    std::istringstream steps(forward.starts_with('/') ? forward : WithForwardSlashes(folder) + "/" + forward);
    std::string absolute;
    for (std::string step; std::getline(steps, step, '/');) {
        if (step.empty() || step == ".") continue;
        const bool leadsBack =
            step == ".." && !absolute.empty() && !absolute.ends_with("/..") && IsRealFolder(absolute);
        if (leadsBack)
            absolute.erase(absolute.rfind('/'));
        else if (step != ".." || !absolute.empty()) // above the top is the top
            absolute += "/" + step;
    }
    return absolute.empty() ? "/" : absolute;
}

Installation ReadInstallation(const std::string& path, const std::string& shownPath) {
    return OnceInAMoment(&MomentAnswers::installations, path, [&] { return ParseInstallation(path, shownPath); });
}

std::vector<std::string> ReadDataPath(const std::string& folder) {
    return OnceInAMoment(&MomentAnswers::dataPaths, folder, [&] { return ParseDataPath(folder); });
}

std::string ReadVersionText(const std::string& folder) {
    const XmlFile file = OpenConfiguration(folder);
    return file.Attribute(file.Top("configuration"), "version");
}

} // namespace lmkUtils::detail
