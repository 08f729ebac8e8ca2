#include <gtest/gtest.h>

#include "core/model.h"
#include "core/provenance.h"
#include "core/start_up.h"
#include "support/fault_text.h"
#include "support/test_folder.h"

using namespace osm;

TEST(Provenance, Sha256OfTheStandardTestMessages) {
    EXPECT_EQ(Sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    // 56 bytes: the length no longer fits the first block.
    EXPECT_EQ(Sha256Hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(Sha256Hex(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

// Every file a start-up reads is in the log with the hash of its contents, and
// a log opened inside another hands its files on.
TEST(Provenance, TheStartUpLogNamesEveryInputWithItsHash) {
    test::TestFolder f;
    test::WriteSmallRiver(f);
    InputLog outer;
    {
        InputLog inner;
        Model m;
        StartUp(m, StartOptions{f.path(), true, {}});
        const Provenance p = MakeProvenance(true, 48, 2, inner.files());
        bool phy = false;
        for (const auto& [path, sha] : p.inputs) {
            EXPECT_EQ(sha, Sha256Hex(test::TestFolder::ReadFile(path))) << path;
            phy = phy || path.ends_with("/default.phy");
        }
        EXPECT_TRUE(phy);
        EXPECT_GT(p.inputs.size(), 8u);
    }
    EXPECT_GT(outer.files().size(), 8u);
    const Provenance p = MakeProvenance(false, 60, 5, {f.Write("a.txt", "abc")});
    const std::string json = ProvenanceJson(p, "/out/r.csv");
    EXPECT_NE(json.find("\"result\": \"r.csv\""), std::string::npos);
    EXPECT_NE(json.find("\"mode\": \"whole model\""), std::string::npos);
    EXPECT_NE(json.find("\"start_year\": 1960"), std::string::npos);
    EXPECT_NE(json.find("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"), std::string::npos);
    EXPECT_NE(test::FaultText([&] { FileSha256(f.File("gone.txt")); }).find("gone.txt"), std::string::npos);
}
