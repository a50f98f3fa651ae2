#include <cfg/CfgScenario.h>

#include <exception>
#include <optional>
#include <utility>

#include <Commons/WholeFile.h>

#include "../Commons/Files.h"
#include "Document.h"
#include "ScenarioReader.h"
#include "ScenarioWriter.h"

namespace cfg {

namespace {

using Commons::detail::XmlFault;

std::string Message(const char* path, const XmlFault& fault) {
    return std::string(path) + ":" + std::to_string(fault.row) + ": " + fault.reason;
}

// Makes the document of a file; null, or of no use, if there is a fault.
std::optional<XmlFault> ReadFile(const char* path, std::unique_ptr<detail::Document>& document) {
    try {
        std::string bytes;
        std::string reason;
        if (!Commons::detail::ReadPlainFile(path, bytes, reason)) return XmlFault{0, reason};
        document = std::make_unique<detail::Document>(bytes.size());
        return detail::ReadScenario(std::move(bytes), *document);
    } catch (const std::exception&) { // memory is all that can fail
        return XmlFault{0, "out of memory"};
    }
}

// What was written must be readable. A text may hold what XML cannot, such as a NUL.
std::optional<XmlFault> WriteFile(const char* path, const detail::Document& document) {
    if (!document.isSound) return XmlFault{0, "not saved, since the scenario could not be loaded"};
    try {
        const std::string bytes = detail::WriteScenario(document);
        detail::Document check(bytes.size());
        if (std::optional<XmlFault> fault = detail::ReadScenario(bytes, check)) {
            fault->reason = "not saved, since it could not be loaded again: " + fault->reason;
            return fault;
        }
        std::string reason;
        if (!Commons::WriteFileWhole(path, bytes, reason)) return XmlFault{0, "not saved: " + reason};
        return std::nullopt;
    } catch (const std::exception&) {
        return XmlFault{0, "not saved: out of memory"};
    }
}

} // namespace

CfgScenario::CfgScenario() = default;
CfgScenario::~CfgScenario() = default;

bool CfgScenario::load(const char* path, Commons::Encoding::Mode, Orbe::Network*, ScenarioConvertion::CallBack*, bool,
                       bool, bool) {
    errorMessage.clear();
    std::unique_ptr<detail::Document> loaded;
    const char* const shownPath = path ? path : "";
    const std::optional<XmlFault> fault = ReadFile(shownPath, loaded);
    if (!fault) {
        document = std::move(loaded);
        return true;
    }
    errorMessage = Message(shownPath, *fault);
    document = std::make_unique<detail::Document>();
    document->isSound = false;
    return false;
}

bool CfgScenario::save(const char* path, Commons::Encoding::Mode, bool) {
    const char* const shownPath = path ? path : "";
    const std::optional<XmlFault> fault = WriteFile(shownPath, Current());
    if (fault) errorMessage = Message(shownPath, *fault);
    return !fault;
}

Scenario* CfgScenario::getRootSection() { return Current().Root(); }

// Made when first asked for, since most objects load a file at once.
detail::Document& CfgScenario::Current() {
    if (!document) document = std::make_unique<detail::Document>();
    return *document;
}

} // namespace cfg
