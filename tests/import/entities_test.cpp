/// Entities, encodings, and everything that a document may try to pull in from elsewhere.

#include <algorithm>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/catalog_dtd.h"
#include "import/test_texts.h"
#include "support/catalog_import.h"

namespace tarvex::test::entities_test {
namespace {

using testing::HasSubstr;

/// A port of this machine on which somebody listens.
class ListeningSocket {
  public:
    ListeningSocket() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), size), 0);
        EXPECT_EQ(::listen(socket_, 5), 0);
        EXPECT_EQ(::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        port_ = ntohs(address.sin_port);
    }
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;
    ~ListeningSocket() { ::close(socket_); }

    std::string Host() const { return "127.0.0.1:" + std::to_string(port_); }

    /// Somebody has connected since the socket was made.
    bool HasConnection() const {
        pollfd descriptor = {socket_, POLLIN, 0};
        return ::poll(&descriptor, 1, 100) != 0;
    }

    void Connect() const {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port_);
        const int client = ::socket(AF_INET, SOCK_STREAM, 0);
        EXPECT_EQ(::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(client);
    }

  private:
    int socket_;
    std::uint16_t port_ = 0;
};

/// The clean catalog with this text in place of the block's name.
std::string WithBlockName(const std::string& name) {
    std::string catalog = CleanCatalog();
    return catalog.replace(catalog.find(">Amp<") + 1, 3, name);
}

/// The name of the one block after an import.
std::string ImportedBlockName(ManagerRun& run, const std::string& xml) {
    if (!run.Import(run.dir.Write("Cat.xml", xml))) {
        return "(failed)";
    }
    const ZMTNode* block = run.manager.FindCatalog("Cat")->GetChild(0x22);
    return block != nullptr ? block->GetName() : "(no block)";
}

TEST(Entities, TextsOfACatalogAreMergedAroundEntitiesAndEndAtComments) {
    struct Case {
        const char* text;
        const char* name;
    };
    constexpr Case kCases[] = {
        {"Am&p;lifier", "Amplifier"}, {"&p;", "p"},        {"Am&#112;", "Amp"}, {"Am<!-- -->plifier", "Am"},
        {"Am<![CDATA[p]]>", "Am"},    {"Am<?pi?>p", "Am"}, {" Amp ", "_Amp_"},  {"Am&amp;p", "Amp"},
    };
    for (const auto& [text, name] : kCases) {
        SCOPED_TRACE(text);
        ManagerRun run;
        EXPECT_EQ(ImportedBlockName(run, WithDoctype(WithBlockName(text), R"([<!ENTITY p "p">])")), name);
    }
}

TEST(Entities, ExternalEntityComesFromALocalFile) {
    ManagerRun run;
    run.dir.Write("name.txt", "plif");
    EXPECT_EQ(
        ImportedBlockName(run, WithDoctype(WithBlockName("Am&x;ier"), R"([<!ENTITY x SYSTEM "name.txt">])")),
        "Amplifier");
}

TEST(Entities, ExternalEntityMayHoldABlock) {
    std::string catalog = CleanCatalog();
    const std::size_t start = catalog.find("<FBlock>");
    const std::size_t length = catalog.find("</FBlock>") + 9 - start;
    ManagerRun run;
    run.dir.Write("amp.xml", catalog.substr(start, length));
    catalog.replace(start, length, "&amplifier;");
    EXPECT_EQ(ImportedBlockName(run, WithDoctype(catalog, R"([<!ENTITY amplifier SYSTEM "amp.xml">])")),
              "Amp");
}

TEST(Entities, ExternalEntityThatIsNoLocalRegularFileFails) {
    const Deadline deadline;
    ManagerRun fifo;
    ASSERT_EQ(::mkfifo(fifo.dir.File("fifo").c_str(), 0600), 0);
    for (const char* systemId : {"missing.txt", ".", "fifo"}) {
        SCOPED_TRACE(systemId);
        fifo.manager.Clear();
        const std::string declaration = R"([<!ENTITY x SYSTEM ")" + std::string(systemId) + R"(">])";
        EXPECT_EQ(ImportedBlockName(fifo, WithDoctype(WithBlockName("Am&x;"), declaration)), "(failed)");
    }
}

TEST(Network, ListeningSocketSeesConnections) {
    const ListeningSocket socket;
    EXPECT_FALSE(socket.HasConnection());
    socket.Connect();
    EXPECT_TRUE(socket.HasConnection());
}

TEST(Network, DtdIsNeverFetched) {
    const Deadline deadline;
    const ListeningSocket socket;
    for (const char* scheme : {"http", "https", "ftp", "HTTP"}) {
        for (const bool validate : {false, true}) {
            SCOPED_TRACE(std::string(scheme) + (validate ? ", validating" : ""));
            ManagerRun run;
            run.manager.Validate = validate;
            const std::string declaration =
                std::string("SYSTEM \"") + scheme + "://" + socket.Host() + "/fcat.dtd\"";
            EXPECT_EQ(ImportedBlockName(run, WithDoctype(CleanCatalog(), declaration)),
                      validate ? "(failed)" : "Amp");
            EXPECT_EQ(run.CountOfTexts(validate ? "Fatal error at file" : "Warning at file"), 1U);
            EXPECT_FALSE(socket.HasConnection());
        }
    }
}

TEST(Network, PublicDtdIsNeverFetched) {
    const Deadline deadline;
    const ListeningSocket socket;
    ManagerRun run;
    const std::string declaration = R"(PUBLIC "-//X//Y//EN" "http://)" + socket.Host() + R"(/fcat.dtd")";
    EXPECT_EQ(ImportedBlockName(run, WithDoctype(CleanCatalog(), declaration)), "Amp");
    EXPECT_FALSE(socket.HasConnection());
}

TEST(Network, EntitiesAreNeverFetched) {
    const Deadline deadline;
    const ListeningSocket socket;
    const std::string url = "http://" + socket.Host() + "/x";
    const std::pair<const char*, std::string> kCases[] = {
        {"entity", "[<!ENTITY p SYSTEM \"" + url + "\">]"},
        {"parameter entity", "[<!ENTITY % q SYSTEM \"" + url + "\">%q;<!ENTITY p \"p\">]"},
    };
    for (const auto& [what, declaration] : kCases) {
        SCOPED_TRACE(what);
        ManagerRun run;
        EXPECT_EQ(ImportedBlockName(run, WithDoctype(WithBlockName("Am&p;"), declaration)), "(failed)");
        EXPECT_FALSE(socket.HasConnection());
    }
}

TEST(Network, SchemaHintsAreNotFollowed) {
    const Deadline deadline;
    const ListeningSocket socket;
    std::string catalog = CleanCatalog();
    catalog.replace(catalog.find("<FunctionCatalog>"), 17,
                    R"(<FunctionCatalog xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" )"
                    R"(xsi:noNamespaceSchemaLocation="http://)" +
                        socket.Host() + R"(/fcat.xsd">)");
    ManagerRun run;
    run.manager.Validate = true;
    EXPECT_EQ(ImportedBlockName(run, catalog), "Amp");
    EXPECT_FALSE(socket.HasConnection());
}

/// Ten entities, each of which stands for ten of the one before: 10^10 references in all.
std::string Bomb() {
    std::string declarations = "[<!ENTITY e0 \"x\">";
    for (int i = 1; i <= 10; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j) {
            declarations += "&e" + std::to_string(i - 1) + ";";
        }
        declarations += "\">";
    }
    return declarations + "]";
}

TEST(EntityBound, ExpansionBombIsAParseFailure) {
    const Deadline deadline;
    std::string inAttribute = CleanCatalog();
    inAttribute.replace(inAttribute.find("<Function>"), 10, "<Function Odd=\"&e10;\">");
    const std::pair<const char*, std::string> kCases[] = {{"text", WithBlockName("&e10;")},
                                                          {"attribute", inAttribute}};
    for (const auto& [where, catalog] : kCases) {
        SCOPED_TRACE(where);
        ManagerRun run;
        EXPECT_EQ(ImportedBlockName(run, WithDoctype(catalog, Bomb())), "(failed)");
        ASSERT_EQ(run.CountOfTexts("Parser:"), 1U);
        // Behind the warning that a text is cut, where there is one.
        EXPECT_TRUE(std::ranges::any_of(run.console, [&](const SinkText& shown) {
            return shown.text.find("Fatal error at file '" + run.dir.File("Cat.xml")) != std::string::npos;
        }));
        EXPECT_EQ(run.console.back(), (SinkText{"Error(s) occured, XML database not available", 1}));
    }
}

TEST(EntityBound, EntityThatContainsItselfIsAParseFailure) {
    const Deadline deadline;
    ManagerRun run;
    EXPECT_EQ(
        ImportedBlockName(run, WithDoctype(WithBlockName("&a;"), R"([<!ENTITY a "&b;"><!ENTITY b "&a;">])")),
        "(failed)");
}

TEST(EntityBound, CatalogWithManyEntitiesIsRead) {
    std::string catalog = CleanCatalog();
    std::string description = "<FBlockDescription>";
    for (int i = 0; i < 20'000; ++i) {
        description += "&p;&lt;";
    }
    catalog.insert(catalog.find("<Function>"), description + "</FBlockDescription>");
    ManagerRun run;
    EXPECT_EQ(ImportedBlockName(run, WithDoctype(catalog, R"([<!ENTITY p "p">])")), "Amp");
}

/// A text of ASCII letters in UTF-16 with a byte order mark.
std::string Utf16(const std::string& text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : text) {
        bytes += bigEndian ? std::string({'\0', c}) : std::string({c, '\0'});
    }
    return bytes;
}

TEST(Encodings, CatalogMayBeInAnyOfThem) {
    std::string utf16 = CleanCatalog();
    utf16.replace(utf16.find("UTF-8"), 5, "UTF-16");
    const std::pair<const char*, std::string> kCases[] = {
        {"UTF-8", CleanCatalog()},
        {"UTF-8 with a byte order mark", "\xEF\xBB\xBF" + CleanCatalog()},
        {"UTF-16, little endian", Utf16(utf16, false)},
        {"UTF-16, big endian", Utf16(utf16, true)},
        {"without XML declaration", CleanCatalog().substr(CleanCatalog().find("<FunctionCatalog"))},
    };
    for (const auto& [encoding, xml] : kCases) {
        SCOPED_TRACE(encoding);
        ManagerRun run;
        EXPECT_EQ(ImportedBlockName(run, xml), "Amp");
        EXPECT_EQ(run.console.size(), 1U);
    }
}

struct EncodingCase {
    const char* encoding;
    const char* bytes;
    const char* utf8;
};

TEST(Encodings, TextsArriveInUtf8) {
    constexpr EncodingCase kCases[] = {
        {"ISO-8859-1", "\xC4\xDF", "\xC3\x84\xC3\x9F"},
        {"windows-1252", "\x80", "\xE2\x82\xAC"},
        {"UTF-8", "\xC3\x84", "\xC3\x84"},
        {"US-ASCII", "&#xC4;", "\xC3\x84"},
    };
    for (const auto& [encoding, bytes, utf8] : kCases) {
        SCOPED_TRACE(encoding);
        std::string catalog = CleanCatalog();
        catalog.replace(catalog.find("UTF-8"), 5, encoding);
        catalog.replace(catalog.find("0x22"), 4, bytes);  // the identifier that cannot be read
        ManagerRun run;
        EXPECT_FALSE(run.Import(run.dir.Write("Cat.xml", catalog), run.dir.File("Cat.log")))
            << "no valid block is left";
        EXPECT_THAT(
            ReadFile(run.dir.File("Cat.log")),
            HasSubstr("Error #0141 in '/Cat/Amp':\n  Failed to analyze value '" + std::string(utf8) + "'\n"));
    }
}

TEST(Encodings, LettersBeyondAsciiAreDroppedFromNames) {
    ManagerRun run;
    std::string catalog = WithBlockName("Verst\xE4rker");
    catalog.replace(catalog.find("UTF-8"), 5, "ISO-8859-1");
    EXPECT_EQ(ImportedBlockName(run, catalog), "Verstrker");
}

}  // namespace
}  // namespace tarvex::test::entities_test
