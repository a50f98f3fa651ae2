#ifndef LMKUTILS_ENVCONFIG_H
#define LMKUTILS_ENVCONFIG_H

#include <cstdint>
#include <string>
#include <vector>

#include <environment/Export.h>

namespace lmkUtils {

// The installation of this process: one configuration file, the configurations that it names, their versions and data
// paths, and which configuration is current. Every answer is read from disk at the moment of the call. All of it is
// process-wide and unlocked; an object of the class is a handle without a state of its own.
//
// A file in use that has become unreadable or malformed gives empty answers. Only taking a file into use throws
// ConfigurationError, and so does any question but findInPath and operator[] as long as the file that the process began
// with has never been readable.
class TAVREL_ENVIRONMENT_API EnvConfig {
public:
    // A plain record, at home with memset: all bytes 0xFF is a version of which nothing was given.
    struct TAVREL_ENVIRONMENT_API Version {
        std::int32_t numbers[4]; // from the most significant on, -1 for one that was not given

        // The numbers that were given, joined by "."; empty if none was.
        std::string toString() const;
    };

    // Neither throws in this implementation; one that opens the installation here may throw ConfigurationError.
    EnvConfig();
    ~EnvConfig(); // NOLINT(performance-trivially-destructible): another implementation may close here what it opened
    EnvConfig(const EnvConfig&) = delete;
    EnvConfig& operator=(const EnvConfig&) = delete;

    // The configuration file in use, as it was given; empty for none. Starts as the value of the environment variable
    // TAVREL_CONFIG.
    static std::string ourConfigCfgFile;

    // Takes a file into use. A relative path means the working directory of this moment, also after that has changed.
    // Throws ConfigurationError for a file that cannot be read or is malformed, and then nothing has changed. The
    // current configuration stays what it is.
    static void setTavrelConfigFilePath(const std::string& path);

    // Throws ConfigurationError if the file in use is the one that the process began with and has never been readable.
    // Costs nothing once it has been read.
    static void requireInitialFile();

    // Makes a configuration current. False for a name that the installation does not have, such as the empty one, and
    // then nothing has changed. The flag is not used.
    static bool setConfig(const std::string& name, bool flag);
    // Makes none current, as at the beginning.
    static void leaveConfig();
    // Empty until one was made current. The reference stays good for the process, its text until the next change.
    static const std::string& getCurrentConfiguration();

    // What is in use, to be put back later just as it is, whatever has become of file and configuration by then.
    struct TAVREL_ENVIRONMENT_API InUse {
        std::string file;          // as it was given
        std::string place;         // where that led when it was taken into use
        std::string configuration; // the current one
    };
    static InUse getInUse();
    static void putBack(const InUse& former);

    // In the order of the file.
    static std::vector<std::string> getConfigurationsList();
    // The folder of the configuration: absolute, forward slashes. Empty for an unknown name.
    static std::string getConfigPath(const std::string& name);
    // `path` is the folder of a configuration. False, and an untouched record, if its version cannot be read.
    static bool getConfigVersion(const std::string& path, Version& version);

    // Each root of the data path, "/" and `relative`, in the order of the data path: absolute, concrete, forward
    // slashes. What they name need not exist. Empty for an unknown configuration.
    static std::vector<std::string> getSeparatedPathForConfiguration(const std::string& name,
                                                                     const std::string& relative);
    // The same for the current configuration; empty if there is none.
    static std::vector<std::string> getSeparatedPath(const std::string& relative);

    // The path with forward slashes, its longest leading folders that are the value of a path variable replaced by
    // ${NAME}. The flag is not used.
    static std::string transformInGenericPath(const std::string& path, bool flag);

    // The first root / directory / file of the current data path that is an existing file, with forward slashes;
    // empty if there is none. Steps upwards never leave the root: such a root has no such file. A symbolic link below
    // a root is followed, since whoever laid out the installation placed it there.
    static std::string findInPath(const std::string& directory, const std::string& file);

    // The text with variables expanded and forward slashes; a relative one below the first root of the current data
    // path, if there is one. Nothing is tested for existence.
    std::string operator[](const std::string& path) const;
};

} // namespace lmkUtils

#endif
