#include "online/UpdateManifest.hpp"

#include <charconv>
#include <utility>

#include "online/UpdateInfo.hpp"

namespace norvane {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AllOf(std::string_view s, bool (*ok)(char)) {
  for (char c : s)
    if (!ok(c)) return false;
  return true;
}

std::optional<int64_t> Decimal(std::string_view s, size_t maxDigits) {
  if (s.empty() || s.size() > maxDigits || !AllOf(s, IsDigit)) return std::nullopt;
  int64_t v = 0;
  std::from_chars(s.data(), s.data() + s.size(), v);
  return v;
}

std::optional<int16_t> ParseVersion(std::string_view s) {
  const size_t dot = s.find('.');
  if (dot == std::string_view::npos || s.size() - dot - 1 != 2) return std::nullopt;
  const auto major = Decimal(s.substr(0, dot), 3);
  const auto minor = Decimal(s.substr(dot + 1), 2);
  if (!major || !minor) return std::nullopt;
  const int64_t v = *major * 100 + *minor;
  if (v < 1 || v > 32767) return std::nullopt;
  return static_cast<int16_t>(v);
}

bool IsPlatformChar(char c) { return (c >= 'a' && c <= 'z') || IsDigit(c) || c == '-' || c == '_'; }

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::optional<Sha256Digest> ParseDigest(std::string_view s) {
  Sha256Digest d{};
  if (s.size() != 2 * d.size()) return std::nullopt;
  for (size_t i = 0; i < d.size(); ++i) {
    const int hi = HexValue(s[2 * i]), lo = HexValue(s[2 * i + 1]);
    if (hi < 0 || lo < 0) return std::nullopt;
    d[i] = static_cast<unsigned char>(hi * 16 + lo);
  }
  return d;
}

}  // namespace

std::optional<UpdateManifest> ParseUpdateManifest(std::string_view text) {
  UpdateManifest m;
  bool header = false, version = false, platform = false, size = false, digest = false;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    if (end == std::string_view::npos) return std::nullopt;  // every line ends with a line feed
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!header) {
      if (line != kManifestHeader) return std::nullopt;
      header = true;
      continue;
    }
    const size_t colon = line.find(": ");
    if (colon == std::string_view::npos) return std::nullopt;
    const std::string_view key = line.substr(0, colon), value = line.substr(colon + 2);
    const auto once = [](bool& seen) { return !std::exchange(seen, true); };
    if (key == "version" && once(version)) {
      const auto v = ParseVersion(value);
      if (!v) return std::nullopt;
      m.version = *v;
    } else if (key == "platform" && once(platform)) {
      if (value.empty() || value.size() > 40 || !AllOf(value, IsPlatformChar)) return std::nullopt;
      m.platform = std::string(value);
    } else if (key == "size" && once(size)) {
      const auto v = Decimal(value, 12);
      if (!v || *v < 1 || *v > kExecutableLimit) return std::nullopt;
      m.size = *v;
    } else if (key == "sha256" && once(digest)) {
      const auto d = ParseDigest(value);
      if (!d) return std::nullopt;
      m.sha256 = *d;
    } else {
      return std::nullopt;  // unknown or repeated
    }
  }
  if (!(header && version && platform && size && digest)) return std::nullopt;
  return m;
}

std::optional<UpdateManifest> ReadSignedManifest(std::string_view text, std::string_view signature,
                                                 const UpdatePublicKey& key) {
  if (!VerifyUpdateSignature(reinterpret_cast<const unsigned char*>(text.data()), text.size(), signature, key))
    return std::nullopt;
  return ParseUpdateManifest(text);
}

ManifestVerdict JudgeManifest(const std::optional<UpdateManifest>& manifest, int16_t ownVersion,
                              std::string_view ownPlatform) {
  if (!manifest) return ManifestVerdict::Invalid;
  if (manifest->platform != ownPlatform) return ManifestVerdict::OtherPlatform;
  if (manifest->version <= ownVersion) return ManifestVerdict::NotNewer;
  return ManifestVerdict::Install;
}

Sha256::Sha256() { crypto_hash_sha256_init(&state_); }

void Sha256::Update(const void* data, std::size_t size) {
  crypto_hash_sha256_update(&state_, static_cast<const unsigned char*>(data), size);
}

Sha256Digest Sha256::Final() {
  Sha256Digest d{};
  crypto_hash_sha256_final(&state_, d.data());
  return d;
}

}  // namespace norvane
