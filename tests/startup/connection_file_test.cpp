#include "startup/connection_file.h"

#include "startup/reasons.h"

namespace {

using startup::ConnectionRecord;
using startup::data_source_of;
using startup::scramble;
using startup::StartUpError;
using startup::unscramble;

std::string padded(std::string field, std::size_t width = 50) {
    field.resize(width, ' ');
    return field;
}

TEST(ConnectionFile, DecodesByHand) {
    const struct {
        std::string field;
        const char* text;
    } cases[] = {
        // key 5, fillers "abc", "SHOP" + 5 = "XMTU", fillers "xyz"
        {"\005abcXMTUxyz", "SHOP"},
        // the same between blanks; a key of 9 is a tab, not a blank
        {padded("  \005abcXMTUxyz"), "SHOP"},
        {padded("\011   JK~~~"), "AB"},
        // key 13, "PC1\SQL" + 13
        {"\015###]P>i`^Y###", "PC1\\SQL"},
        // key 10: 'ب' is C8 -> D2, 'ة' is C9 -> D3
        {"\012abc\xD2\xD3xyz", "بة"},
        // key 15: 'ے' is FF, which goes around to 0E
        {"\017abc\016xyz", "ے"},
        // too short for a text
        {"", ""},
        {"    ", ""},
        {"\x05", ""},
        {"\005abcxyz", ""},
        {"\005abcxy", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(unscramble(c.field), c.text);
}

TEST(ConnectionFile, EveryTextComesBackUnderEveryKey) {
    std::mt19937 random(7);
    for (const std::string text : {"", "A", "PC1\\SQLEXPRESS", "Not Found", "192.168.1.5", "متجر النور",
                                   "a b", " ends ", "~}|", "éے", "\x7F"}) {
        for (int i = 0; i < 60; ++i) {
            const std::string field = scramble(text, 50, random);
            ASSERT_EQ(field.size(), 50U);
            EXPECT_GE(field[0], 5);
            EXPECT_LE(field[0], 15);
            EXPECT_EQ(unscramble(field), text);
        }
    }
}

TEST(ConnectionFile, RefusesTextsThatDoNotFit) {
    std::mt19937 random(1);
    EXPECT_EQ(unscramble(scramble(std::string(43, 'x'), 50, random)), std::string(43, 'x'));
    EXPECT_THROW(scramble(std::string(44, 'x'), 50, random), StartUpError);
    EXPECT_THROW(scramble("shop😀", 50, random), StartUpError);
    EXPECT_THROW(scramble("\xFF", 50, random), StartUpError);
}

TEST(ConnectionFile, ARecordIsTwoHundredBytes) {
    std::mt19937 random(3);
    const ConnectionRecord record{"الخادم\\SQL", "متجر", "10.0.0.7"};
    const std::string bytes = startup::encode_connection(record, random);
    ASSERT_EQ(bytes.size(), 200U);
    EXPECT_EQ(startup::decode_connection(bytes), record);
    EXPECT_EQ(startup::decode_connection(bytes + "further records"), record);
    for (const std::size_t length : {0U, 1U, 50U, 199U}) {
        EXPECT_THROW(startup::decode_connection(bytes.substr(0, length)), StartUpError) << length;
    }

    // Records of the right length that name nothing: blank, overwritten, without a server, without a
    // database.
    const std::string blank(200, ' ');
    for (const std::string& damaged :
         {blank, std::string(200, '\0'), std::string(200, 'A'), blank.substr(0, 50) + bytes.substr(50),
          bytes.substr(0, 50) + blank.substr(0, 50) + bytes.substr(100),
          startup::encode_connection({"PC1;User ID=x", "db", "Not Found"}, random)})
        EXPECT_THROW(startup::decode_connection(damaged), StartUpError) << damaged;

    const std::string renewed = startup::with_address(bytes + "tail", "192.168.1.5", random);
    EXPECT_EQ(renewed.substr(0, 100), bytes.substr(0, 100));  // only the address changes
    EXPECT_EQ(renewed.substr(200), "tail");
    EXPECT_EQ(startup::decode_connection(renewed).address, "192.168.1.5");
}

TEST(ConnectionFile, SaysBehindTheRecordWhatIsEncrypted) {
    std::mt19937 random(3);
    for (const char* word : {"require", "off"}) {
        ConnectionRecord record{"PC1", "shop", "10.0.0.7", word};
        const std::string bytes =
            startup::with_address(startup::encode_connection(record, random), "10.0.0.8", random);
        record.address = "10.0.0.8";
        EXPECT_EQ(bytes.substr(200), std::string("Encryption=") + word + "\n");
        EXPECT_EQ(startup::decode_connection(bytes), record);
        EXPECT_TRUE(startup::connection_string(record, "x").ends_with(std::string(";Encryption=") + word));
    }
    // Any other word leaves the log-in encrypted.
    const std::string bytes = startup::encode_connection({"PC1", "shop"}, random);
    for (const char* tail : {"", "Encryption=of", "Encryption=off;Data Source=PC2", "encryption=off"})
        EXPECT_EQ(startup::decode_connection(bytes + tail).encryption, "") << tail;
}

TEST(ConnectionFile, LeadsToTheDataSource) {
    const struct {
        ConnectionRecord record;
        const char* server;
        const char* data_source;
        bool is_embedded = false;
    } cases[] = {
        {{"SHOP", "db", "Not Found"}, "SHOP", "SHOP"},
        {{"SHOPPCC", "db", "Not Found"}, "SHOPPC", "SHOPP"},
        {{"SHOPPCC", "db", "192.168.1.5"}, "SHOPPC", "192.168.1.5"},
        {{"shopc ", "db", "Not Found"}, "shop", "shop"},
        {{"PC1\\SQLEXPRESS", "db", "192.168.1.5"}, "PC1\\SQLEXPRESS", "192.168.1.5\\SQLEXPRESS"},
        {{"PC1\\SQLEXPRESS", "db", "Not Found"}, "PC1\\SQLEXPRESS", "PC1\\SQLEXPRESS"},
        {{"PC1\\A\\B", "db", "10.0.0.1"}, "PC1\\A\\B", "10.0.0.1\\A\\B"},
        {{"PC1\\INC", "db", "10.0.0.1"}, "PC1\\IN", "10.0.0.1\\IN"},
        {{"SHOP", "db", "host.abc"}, "SHOP", "host.ab"},  // the second cut takes from the address too
        {{"SHOP", "db", "not found"}, "SHOP", "not found"},
        {{"embedded", "shop.db", "Not Found"}, "embedded", "embedded", true},
        {{"C", "db", "Not Found"}, "", ""},
        // The server text alone does not say whether a shop is in a file.
        {{"Embedded", "shop.db", ""}, "Embedded", "Embedded", true},
        {{"embeddedcc", "shop.db", "Not Found"}, "embeddedc", "embedded", true},
        {{"SHOP", "shop.db", "embedded"}, "SHOP", "embedded", true},
        {{"embedded", "shop.db", "10.0.0.1"}, "embedded", "10.0.0.1"},
        {{"embedded\\SQL", "shop.db", "Not Found"}, "embedded\\SQL", "embedded\\SQL"},
    };
    for (const auto& c : cases) {
        const auto source = data_source_of(c.record);
        EXPECT_EQ(source.server, c.server) << c.record.server;
        EXPECT_EQ(source.data_source, c.data_source) << c.record.server;
        EXPECT_EQ(source.is_embedded(), c.is_embedded) << c.record.server;
    }
}

}  // namespace
