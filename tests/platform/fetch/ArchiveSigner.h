#pragma once

#include <sodium.h>

#include <array>
#include <stdexcept>
#include <string>

namespace kestrune {

/// A publisher with a key of its own.
class ArchiveSigner final {
public:
    ArchiveSigner() {
        if (::sodium_init() < 0 || ::crypto_sign_keypair(m_public.data(), m_secret.data()) != 0) {
            throw std::runtime_error("no key");
        }
    }

    [[nodiscard]] std::string publicKey() const { return base64(m_public.data(), m_public.size()); }

    [[nodiscard]] std::string signature(const std::string& bytes) const {
        std::array<unsigned char, crypto_sign_BYTES> sign{};
        const std::basic_string<unsigned char> message(bytes.begin(), bytes.end());
        ::crypto_sign_detached(sign.data(), nullptr, message.data(), message.size(), m_secret.data());
        return base64(sign.data(), sign.size());
    }

private:
    static std::string base64(const unsigned char* bytes, std::size_t size) {
        std::string text(sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL), '\0');
        ::sodium_bin2base64(text.data(), text.size(), bytes, size, sodium_base64_VARIANT_ORIGINAL);
        text.pop_back();  // the closing NUL
        return text;
    }

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> m_public{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> m_secret{};
};

}  // namespace kestrune
