#include <cfg/CfgScenario.h>

#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include <Commons/WholeFile.h>

#include "../Commons/Files.h"
#include "Document.h"
#include "ScenarioReader.h"
#include "ScenarioWriter.h"

namespace cfg {

namespace {

using Commons::detail::XmlFault;

std::string Message(const std::string& path, const XmlFault& fault) {
    return path + ":" + std::to_string(fault.row) + ": " + fault.reason;
}

// The file that stands at a path by now. A save gives the path another file, and one file may have several paths, so it
// takes both to know it again.
detail::Home HomeAt(const std::string& path) {
    detail::Home home;
    const std::string name = Commons::detail::WithForwardSlashes(path);
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(name, error);
    home.path = error ? name : canonical.string();
    home.TakeNumber();
    return home;
}

// The same for a file that was just read.
detail::Home HomeOf(const Commons::detail::OpenedFile& opened, const std::string& path) {
    detail::Home home;
    home.path = opened.place;
    home.TakeNumber();
    if (home.number != 0 && home.number == opened.number && home.device == opened.device) return home;
    return HomeAt(path);
}

detail::Home* FindHome(std::vector<detail::Home>& homes, const detail::Home& wanted) {
    for (detail::Home& home : homes)
        if (home.path == wanted.path ||
            (wanted.number != 0 && home.device == wanted.device && home.number == wanted.number))
            return &home;
    return nullptr;
}

// Makes the document of a file; null, or of no use, if there is a fault.
std::optional<XmlFault> ReadFile(const std::string& path, std::unique_ptr<detail::Document>& document) {
    try {
        std::string bytes;
        std::string reason;
        Commons::detail::OpenedFile opened;
        if (!Commons::detail::ReadPlainFile(path, bytes, reason, &opened)) return XmlFault{0, reason};
        document = std::make_unique<detail::Document>(bytes.size());
        document->homes.push_back(HomeOf(opened, path));
        return detail::ReadScenario(std::move(bytes), *document);
    } catch (const std::exception&) { // memory is all that can fail
        return XmlFault{0, "out of memory"};
    }
}

// What was written must be readable. A text may hold what XML cannot, such as a NUL.
std::optional<XmlFault> WriteFile(const std::string& path, detail::Document& document) {
    document.lacksMemory = false;
    if (!document.isSound) return XmlFault{0, "not saved, since the scenario could not be loaded"};
    try {
        std::string bytes;
        if (std::optional<XmlFault> fault = detail::WriteScenario(document, bytes)) return fault;
        if (bytes.size() > Commons::kLargestFile) return XmlFault{0, detail::kTooLargeToSave};
        detail::Document check(bytes.size());
        if (std::optional<XmlFault> fault = detail::ReadScenario(bytes, check)) {
            fault->reason = "not saved, since it could not be loaded again: " + fault->reason;
            return fault;
        }
        const Commons::FileLock lock(path); // so that the file stays the one that is compared
        if (!lock.isFree()) return XmlFault{0, "not saved: another program keeps it locked"};
        std::vector<detail::Home>& homes = document.homes;
        detail::Home home = HomeAt(path);
        homes.reserve(homes.size() + 1); // nothing may fail once the file is saved
        const detail::Home* const former = FindHome(homes, home);
        std::string reason;
        const bool isSaved =
            former ? Commons::ReplaceFileWhole(path, former->saved ? *former->saved : document.source, bytes, reason)
                   : Commons::WriteFileWhole(path, bytes, reason);
        if (!isSaved) return XmlFault{0, "not saved: " + reason};
        home.saved = std::move(bytes);
        home.TakeNumber();
        std::erase_if(homes, [&home](const detail::Home& other) { return other.path == home.path; });
        homes.push_back(std::move(home));
        return std::nullopt;
    } catch (const std::exception&) {
        document.lacksMemory = true;
        return XmlFault{0, "not saved: out of memory"};
    }
}

// The path as a text; none where memory is too short even for that.
std::optional<std::string> Copied(const char* path) {
    try {
        return std::string(path ? path : "");
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

} // namespace

CfgScenario::CfgScenario() = default;
CfgScenario::~CfgScenario() = default;

bool CfgScenario::load(const char* path, Commons::Encoding::Mode, Orbe::Network*, ScenarioConvertion::CallBack*, bool,
                       bool, bool) {
    if (const std::optional<std::string> copy = Copied(path)) return load(*copy);
    document = std::make_unique<detail::Document>();
    document->isSound = false;
    errorMessage = Message(path, XmlFault{0, "out of memory"});
    return false;
}

bool CfgScenario::load(const std::string& path) {
    errorMessage.clear();
    std::unique_ptr<detail::Document> loaded;
    const std::optional<XmlFault> fault = ReadFile(path, loaded);
    if (!fault) {
        document = std::move(loaded);
        return true;
    }
    errorMessage = Message(path, *fault);
    document = std::make_unique<detail::Document>();
    document->isSound = false;
    return false;
}

bool CfgScenario::save(const char* path, Commons::Encoding::Mode, bool) {
    if (const std::optional<std::string> copy = Copied(path)) return save(*copy);
    Current().lacksMemory = true;
    errorMessage = Message(path, XmlFault{0, "not saved: out of memory"});
    return false;
}

bool CfgScenario::save(const std::string& path) {
    errorMessage.clear();
    const std::optional<XmlFault> fault = WriteFile(path, Current());
    if (fault) errorMessage = Message(path, *fault);
    return !fault;
}

bool CfgScenario::lacksMemory() const { return document && document->lacksMemory; }

Scenario* CfgScenario::getRootSection() { return Current().Root(); }

// Made when first asked for, since most objects load a file at once.
detail::Document& CfgScenario::Current() {
    if (!document) document = std::make_unique<detail::Document>();
    return *document;
}

} // namespace cfg
