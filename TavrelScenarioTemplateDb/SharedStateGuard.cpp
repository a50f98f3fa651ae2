#include <TavrelScenarioTemplateDb/SharedStateGuard.h>

#include <iostream>
#include <streambuf>

#include <lmkUtils/EnvConfig.h>
#include <scenario/ScenarioItem.h>

namespace TavrelScenarioTemplateDb {

namespace {

// Takes everything and keeps nothing. A stream without a buffer would fail instead, and may be set to throw then.
class Nowhere : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
};

} // namespace

struct SharedStateGuard::Former {
    lmkUtils::EnvConfig::InUse inUse = lmkUtils::EnvConfig::getInUse();
    Folders* rootModel = scenarioRootModel;
    std::ostream* log = scenarioLog;
    std::streambuf* output = std::cout.rdbuf();
    std::ios_base::iostate outputState = std::cout.rdstate();
    Nowhere nowhere;
};

SharedStateGuard::SharedStateGuard(std::ostream* messages) {
    auto made = std::make_unique<Former>();
    std::cout.rdbuf(messages ? messages->rdbuf() : &made->nowhere);
    former = std::move(made);
}

SharedStateGuard::~SharedStateGuard() {
    std::cout.rdbuf(former->output);
    // Set aside, since a stream that was bad before and is set to throw would throw here.
    const std::ios_base::iostate exceptions = std::cout.exceptions();
    std::cout.exceptions(std::ios_base::goodbit);
    std::cout.clear(former->outputState);
    try {
        std::cout.exceptions(exceptions);
    } catch (const std::ios_base::failure&) {
        // It is what it was.
    }
    scenarioLog = former->log;
    scenarioRootModel = former->rootModel;
    lmkUtils::EnvConfig::putBack(former->inUse);
}

} // namespace TavrelScenarioTemplateDb
