#include "core/provenance.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/fault.h"
#include "core/numbers.h"
#include "core/textfile.h"

namespace osm {

namespace {

constexpr std::array<uint32_t, 64> K = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

uint32_t rotr(uint32_t x, int n) { return (x >> n) | (x << (32 - n)); }

void compress(std::array<uint32_t, 8>& h, const unsigned char* block) {
    std::array<uint32_t, 64> w{};
    for (int i = 0; i < 16; ++i)
        w[i] = uint32_t{block[4 * i]} << 24 | uint32_t{block[4 * i + 1]} << 16 | uint32_t{block[4 * i + 2]} << 8 |
               uint32_t{block[4 * i + 3]};
    for (int i = 16; i < 64; ++i) {
        const uint32_t s0 = rotr(w[i - 15], 7) ^ rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
        const uint32_t s1 = rotr(w[i - 2], 17) ^ rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + s0 + w[i - 7] + s1;
    }
    std::array<uint32_t, 8> v = h;
    for (int i = 0; i < 64; ++i) {
        const uint32_t S1 = rotr(v[4], 6) ^ rotr(v[4], 11) ^ rotr(v[4], 25);
        const uint32_t ch = (v[4] & v[5]) ^ (~v[4] & v[6]);
        const uint32_t t1 = v[7] + S1 + ch + K[i] + w[i];
        const uint32_t S0 = rotr(v[0], 2) ^ rotr(v[0], 13) ^ rotr(v[0], 22);
        const uint32_t maj = (v[0] & v[1]) ^ (v[0] & v[2]) ^ (v[1] & v[2]);
        const uint32_t t2 = S0 + maj;
        v = {t1 + t2, v[0], v[1], v[2], v[3] + t1, v[4], v[5], v[6]};
    }
    for (int i = 0; i < 8; ++i) h[i] += v[i];
}

thread_local InputLog* innermost = nullptr;

std::string jsonText(const std::string& s) {
    std::string out = "\"";
    for (const char c : s) {
        if (c == '"' || c == '\\') out += std::string("\\") + c;
        else if (static_cast<unsigned char>(c) < 0x20) {
            static const char* hex = "0123456789abcdef";
            out += std::string("\\u00") + hex[(c >> 4) & 0xf] + hex[c & 0xf];
        } else
            out += c;
    }
    return out + "\"";
}

}  // namespace

std::string ProgramVersion() {
    return NumText(OSM_VERSION_MAJOR) + "." + NumText(OSM_VERSION_MINOR) + "." + NumText(OSM_VERSION_PATCH);
}

std::string Sha256Hex(const std::string& bytes) {
    std::array<uint32_t, 8> h = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::string msg = bytes;
    const uint64_t bits = static_cast<uint64_t>(bytes.size()) * 8;
    msg += '\x80';
    while (msg.size() % 64 != 56) msg += '\0';
    for (int i = 7; i >= 0; --i) msg += static_cast<char>((bits >> (8 * i)) & 0xff);
    for (size_t at = 0; at < msg.size(); at += 64)
        compress(h, reinterpret_cast<const unsigned char*>(msg.data() + at));
    std::string hex;
    static const char* digits = "0123456789abcdef";
    for (const uint32_t word : h)
        for (int i = 28; i >= 0; i -= 4) hex += digits[(word >> i) & 0xf];
    return hex;
}

std::string FileSha256(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw FileFault(path, "cannot be read to compute its SHA-256");
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return Sha256Hex(bytes);
}

InputLog::InputLog(Closing closing) : outer_(innermost), closing_(closing) { innermost = this; }

InputLog::~InputLog() {
    innermost = outer_;
    if (outer_ && closing_ == HandOn) outer_->Add(files_);
}

void InputLog::Note(const std::string& path) {
    if (!innermost) return;
    std::error_code ec;
    const std::filesystem::path full = std::filesystem::absolute(path, ec);
    innermost->files_.insert(ec ? path : full.lexically_normal().string());
}

Provenance MakeProvenance(bool physOnly, int startYr, int years, const std::set<std::string>& inputs) {
    Provenance p{ProgramVersion(), physOnly, startYr, years, {}};
    for (const std::string& path : inputs) p.inputs.emplace_back(path, FileSha256(path));
    return p;
}

std::string ProvenanceJson(const Provenance& p, const std::string& result) {
    std::string j = "{\n";
    j += "  \"result\": " + jsonText(std::filesystem::path(result).filename().string()) + ",\n";
    j += "  \"program\": \"OSM\",\n";
    j += "  \"version\": " + jsonText(p.version) + ",\n";
    j += "  \"mode\": " + jsonText(p.physOnly ? "physical model only" : "whole model") + ",\n";
    j += "  \"start_year\": " + NumText(1900 + p.startYr) + ",\n";
    j += "  \"years\": " + NumText(p.years) + ",\n";
    j += "  \"inputs\": [";
    for (size_t i = 0; i < p.inputs.size(); ++i)
        j += std::string(i ? "," : "") + "\n    {\"file\": " + jsonText(p.inputs[i].first) +
             ", \"sha256\": " + jsonText(p.inputs[i].second) + "}";
    j += p.inputs.empty() ? "]\n" : "\n  ]\n";
    return j + "}\n";
}

void WriteProvenanceSidecar(const Provenance& p, const std::string& result) {
    TextWriter out(result + ".json");
    out.Bare(ProvenanceJson(p, result));
    out.Commit();
}

}  // namespace osm
