#ifndef CFG_CFGSCENARIO_H
#define CFG_CFGSCENARIO_H

#include <memory>
#include <string>

#include <Commons/Encoding.h>
#include <cfg/Scenario.h>
#include <environment/Export.h>

namespace Orbe {
class Network; // a road network; named by the interface only
}

namespace cfg {

namespace ScenarioConvertion {
class CallBack; // asked about old files by other implementations; named by the interface only
}

// A scenario file, extension "sce", as a tree of sections. The host edits the sections in place; a save stores what
// differs from what was loaded and leaves every other byte of the file as it was. No operation throws.
class TAVREL_ENVIRONMENT_API CfgScenario {
public:
    // An empty scenario: a root section with nothing in it.
    CfgScenario();
    // Releases the tree, removed sections included.
    ~CfgScenario();
    CfgScenario(const CfgScenario&) = delete;
    CfgScenario& operator=(const CfgScenario&) = delete;

    // Replaces the tree by that of the file; sections handed out before are gone. False for a file that cannot be read
    // or is malformed: `errorMessage` then says why, and the tree is an empty root. Network, call-back and flags are
    // not used and may be null and anything.
    bool load(const char* path, Commons::Encoding::Mode mode, Orbe::Network* network,
              ScenarioConvertion::CallBack* callBack, bool flag1, bool flag2, bool flag3);
    // The same with what there is to say.
    bool load(const std::string& path);

    // Writes the file, whole or not at all, as Commons::WriteFileWhole does: a failure leaves what stood at `path` and
    // puts its reason into `errorMessage`. A text that XML cannot hold (a control character, broken UTF-8) is such a
    // failure, and so is any save after a failed load, since it would replace a file that could not be understood. The
    // file that this scenario was loaded from, or was saved as before, is not replaced if it holds something else by
    // now: someone else has changed it, and his work would be lost. Other files are. The flag is not used.
    bool save(const char* path, Commons::Encoding::Mode mode, bool flag);
    bool save(const std::string& path);
    // Whether the last save failed for want of memory, and not because of the file or of what is to be in it.
    bool lacksMemory() const;

    // Never null. Belongs to this object and is another one after each load.
    Scenario* getRootSection();

    // Why the last load or save failed, "path:row: reason", with row 0 where the file as a whole is meant. One
    // that succeeds empties it.
    std::string errorMessage;

private:
    detail::Document& Current();

    std::unique_ptr<detail::Document> document;
};

} // namespace cfg

#endif
