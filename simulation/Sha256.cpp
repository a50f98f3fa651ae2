#include <simulation/Sha256.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <Commons/WholeFile.h>
#include <openssl/evp.h>

namespace TavrelSimulation {

std::string Sha256(std::string_view bytes) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), digest, &size, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("the cryptographic library offers no SHA-256");
    std::string text;
    for (unsigned int i = 0; i < size; ++i) {
        constexpr const char* kDigits = "0123456789abcdef";
        text += kDigits[digest[i] >> 4];
        text += kDigits[digest[i] & 15];
    }
    return text;
}

std::string Sha256OfFile(const std::string& path) {
    // A pipe would never end, and a file beyond any use would take too long.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) ||
        std::filesystem::file_size(path, error) > Commons::kLargestFile || error)
        return "";
    std::ifstream file(path, std::ios::binary);
    if (!file) return "";
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return file.bad() ? "" : Sha256(bytes);
}

} // namespace TavrelSimulation
