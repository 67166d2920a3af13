/// The complaints of the XML parser, collected as text.

#include "import/xml/dom_error_handler.h"

#include <string>

#include <gtest/gtest.h>
#include <xercesc/sax/SAXParseException.hpp>

#include "import/test_texts.h"
#include "import/xml/transcode.h"

namespace tarvex::test::dom_error_handler_test {
namespace {

class DomErrorHandler : public testing::Test {
  protected:
    static xercesc::SAXParseException Complaint(std::string_view message, std::string_view file = "Cat.xml",
                                                XMLFileLoc line = 12, XMLFileLoc column = 5) {
        return {ToDomText(message).c_str(), nullptr, ToDomText(file).c_str(), line, column};
    }

    XmlPlatform platform_;
    ZDOMErrorHandler handler_;
};

TEST_F(DomErrorHandler, StartsWithoutErrorAndText) {
    EXPECT_FALSE(handler_.HasError());
    EXPECT_EQ(handler_.Messages(), "");
}

TEST_F(DomErrorHandler, WarningIsCollectedAndNoError) {
    handler_.warning(Complaint("careful"));
    EXPECT_FALSE(handler_.HasError());
    EXPECT_EQ(handler_.Messages(), "Warning at file 'Cat.xml': Line: 12, Char: 5\n  Message: careful\n");
}

TEST_F(DomErrorHandler, ErrorIsCollectedAndAnError) {
    handler_.error(Complaint("wrong"));
    EXPECT_TRUE(handler_.HasError());
    EXPECT_EQ(handler_.Messages(), "Error at file 'Cat.xml': Line: 12, Char: 5\n  Message: wrong\n");
}

TEST_F(DomErrorHandler, FatalErrorIsCollectedAndAnError) {
    handler_.fatalError(Complaint("broken"));
    EXPECT_TRUE(handler_.HasError());
    EXPECT_EQ(handler_.Messages(), "Fatal error at file 'Cat.xml': Line: 12, Char: 5\n  Message: broken\n");
}

TEST_F(DomErrorHandler, ComplaintsAreListedWithTheirPlaces) {
    FaultList faults;
    handler_.SetFaults(&faults);
    handler_.warning(Complaint("a", "a.xml", 1, 2));
    handler_.error(Complaint("b", "b.dtd", 3, 4));
    handler_.fatalError(Complaint("c", "a.xml", 70'000, 6));
    const struct {
        Kind kind;
        std::string file;
        std::string text;
        std::uint64_t line;
        std::uint64_t column;
    } rows[] = {{Kind::Warning, "a.xml", "a", 1, 2},
                {Kind::Error, "b.dtd", "b", 3, 4},
                {Kind::Fatal, "a.xml", "c", 70'000, 6}};
    ASSERT_EQ(faults.All().size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const Fault& fault = faults.All()[i];
        EXPECT_TRUE(fault.isOfParser) << i;
        EXPECT_EQ(fault.kind, rows[i].kind) << i;
        EXPECT_EQ(fault.file, rows[i].file) << i;
        EXPECT_EQ(fault.text, rows[i].text) << i;
        EXPECT_EQ(fault.line, rows[i].line) << i;
        EXPECT_EQ(fault.column, rows[i].column) << i;
    }
}

TEST_F(DomErrorHandler, ComplaintsFollowOneAnother) {
    handler_.warning(Complaint("a", "a.xml", 1, 2));
    handler_.error(Complaint("b", "b.dtd", 3, 4));
    handler_.warning(Complaint("c", "c.xml", 70'000, 1'000'000));
    EXPECT_TRUE(handler_.HasError());
    EXPECT_EQ(handler_.Messages(), R"(Warning at file 'a.xml': Line: 1, Char: 2
  Message: a
Error at file 'b.dtd': Line: 3, Char: 4
  Message: b
Warning at file 'c.xml': Line: 70000, Char: 1000000
  Message: c
)");
}

TEST_F(DomErrorHandler, ErrorsAreCountedAndTheFirstIsKept) {
    handler_.warning(Complaint("a", "a.xml", 1, 2));
    EXPECT_EQ(handler_.Complaints().errors, 0U);
    handler_.error(Complaint("b", "b.dtd", 3, 4));
    handler_.error(Complaint("c", "c.xml", 5, 6));
    const ParserComplaints& complaints = handler_.Complaints();
    EXPECT_EQ(complaints.errors, 2U);
    EXPECT_EQ(complaints.file, "b.dtd");
    EXPECT_EQ(complaints.line, 3U);
    EXPECT_EQ(complaints.column, 4U);
    EXPECT_EQ(complaints.text, "b");
    EXPECT_FALSE(complaints.isFatal);
    handler_.fatalError(Complaint("d"));
    EXPECT_EQ(complaints.errors, 2U);
    EXPECT_TRUE(complaints.isFatal);
}

TEST_F(DomErrorHandler, ResetForgetsNothing) {
    handler_.error(Complaint("wrong"));
    handler_.resetErrors();
    EXPECT_TRUE(handler_.HasError());
    EXPECT_NE(handler_.Messages(), "");
}

TEST_F(DomErrorHandler, PercentSignsAndLettersBeyondAsciiStand) {
    handler_.warning(Complaint("%n%s \xC3\xA4", "%d.xml"));
    EXPECT_EQ(handler_.Messages(), "Warning at file '%d.xml': Line: 12, Char: 5\n  Message: %n%s \xC3\xA4\n");
}

TEST_F(DomErrorHandler, ComplaintIsCutAt979Bytes) {
    const std::string start = "Error at file 'Cat.xml': Line: 12, Char: 5\n  Message: ";
    handler_.error(Complaint(std::string(2000, 'x')));
    handler_.error(Complaint("next"));
    EXPECT_EQ(handler_.Messages(), start + std::string(979 - start.size(), 'x') + "\n" + start + "next\n");
}

TEST_F(DomErrorHandler, EndlessComplaintsDoNotFillTheMemory) {
    EXPECT_EQ(ZDOMErrorHandler::kMaxMessages, 16'777'216U);
    const std::string entry = "Error at file 'Cat.xml': Line: 12, Char: 5\n  Message: wrong\n";
    struct Row {
        const char* what;
        std::size_t bytes;
        std::string messages;
    };
    const std::string cut = "(more parser messages are left out)\n";
    const Row rows[] = {
        {"a byte of room behind two", 2 * entry.size() + 1, entry + entry + entry + cut},
        {"room for two", 2 * entry.size(), entry + entry + entry + cut},
        {"a byte less", 2 * entry.size() - 1, entry + entry + cut},
        {"no room", 0, entry + cut},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ZDOMErrorHandler handler(row.bytes);
        for (int i = 0; i < 5; ++i) {
            handler.error(Complaint("wrong"));
        }
        EXPECT_TRUE(handler.HasError());
        EXPECT_EQ(handler.Messages(), row.messages);
    }
}

}  // namespace
}  // namespace tarvex::test::dom_error_handler_test
