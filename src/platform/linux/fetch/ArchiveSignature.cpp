#include "platform/linux/fetch/ArchiveSignature.h"

#include <sodium.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <array>
#include <cstddef>

namespace kestrune::ArchiveSignature {

namespace {

/// A file's bytes in memory, read-only.
class MappedFile final {
public:
    explicit MappedFile(int file) {
        struct stat status {};

        if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
            m_size = static_cast<std::size_t>(status.st_size);
            m_bytes = ::mmap(nullptr, m_size, PROT_READ, MAP_SHARED, file, 0);
        }
    }

    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    ~MappedFile() {
        if (bytes() != nullptr) {
            ::munmap(m_bytes, m_size);
        }
    }

    /// Null when there are none.
    [[nodiscard]] const unsigned char* bytes() const {
        return m_bytes == MAP_FAILED ? nullptr : static_cast<const unsigned char*>(m_bytes);
    }

    [[nodiscard]] std::size_t size() const { return m_size; }

private:
    void* m_bytes = MAP_FAILED;
    std::size_t m_size = 0;
};

/// False unless text stands for exactly so many bytes.
template <std::size_t size>
bool decode(const std::string& text, std::array<unsigned char, size>& bytes) {
    std::size_t length = 0;
    const char* end = nullptr;
    return ::sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &length, &end,
                               sodium_base64_VARIANT_ORIGINAL) == 0 &&
           length == size && end == text.data() + text.size();
}

}  // namespace

bool isBy(const std::string& publicKey, const std::string& signature, int file) {
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> key{};
    std::array<unsigned char, crypto_sign_BYTES> sign{};
    if (::sodium_init() < 0 || !decode(publicKey, key) || !decode(signature, sign)) {
        return false;
    }
    const MappedFile archive(file);
    return archive.bytes() != nullptr &&
           ::crypto_sign_verify_detached(sign.data(), archive.bytes(), archive.size(), key.data()) == 0;
}

}  // namespace kestrune::ArchiveSignature
