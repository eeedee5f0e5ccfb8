#pragma once

#include <string>

namespace kestrune::ArchiveSignature {

/// Whether signature is the Ed25519 one over all bytes of the file, made with the secret half of publicKey. Both texts
/// are base64. False as well for an empty file and where anything cannot be read. Any thread.
[[nodiscard]] bool isBy(const std::string& publicKey, const std::string& signature, int file);

}  // namespace kestrune::ArchiveSignature
