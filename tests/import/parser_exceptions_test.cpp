/// An XML parser that throws: texts, the end of the platform, and the failed import.

#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/RuntimeException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "import/test_texts.h"
#include "import/xml/dom_error_handler.h"
#include "import/xml/transcode.h"

namespace tarvex::test::parser_exceptions_test {
namespace {

using testing::ElementsAre;

const char* const kEnd = "Error(s) occured, XML database not available";

/// What a reader does and how often it was asked to.
struct Script {
    std::function<void()> onStart = [] {};
    std::function<void(ZDOMErrorHandler&)> onRead = [](ZDOMErrorHandler&) {};
    int starts = 0;
    int reads = 0;
    int stops = 0;
    int releases = 0;
    std::string path;
    bool validate = false;
};

class ScriptedReader : public DocumentReader {
  public:
    explicit ScriptedReader(Script& script) : script_(script) {}
    void StartPlatform() override {
        ++script_.starts;
        script_.onStart();
    }
    void StopPlatform() override { ++script_.stops; }
    const Element* Read(const std::string& path, bool validate, ZDOMErrorHandler& handler) override {
        ++script_.reads;
        script_.path = path;
        script_.validate = validate;
        script_.onRead(handler);
        return nullptr;
    }
    void Release() override { ++script_.releases; }

  private:
    Script& script_;
};

[[noreturn]] void ThrowXmlException() {
    throw xercesc::RuntimeException("file", 1, xercesc::XMLExcepts::Array_BadIndex,
                                    xercesc::XMLPlatformUtils::fgMemoryManager);
}

[[noreturn]] void ThrowDomException() {
    throw xercesc::DOMException(xercesc::DOMException::NOT_FOUND_ERR);
}

[[noreturn]] void ThrowRuntimeError() {
    throw std::runtime_error("secret of the library");
}

[[noreturn]] void ThrowBadAlloc() {
    throw std::bad_alloc();
}

/// The message that an exception of the parser carries.
template <class Exception>
std::string MessageOf(void (*thrower)()) {
    try {
        thrower();
    } catch (const Exception& exception) {
        char* text = xercesc::XMLString::transcode(exception.getMessage());
        std::string message = text;
        xercesc::XMLString::release(&text);
        EXPECT_NE(message, "");
        return message;
    }
    return "(nothing thrown)";
}

class ParserExceptions : public testing::Test {
  protected:
    XmlPlatform platform_;
    Script script_;
    ManagerRun run_{std::make_unique<ScriptedReader>(script_)};
    std::string path_ = run_.dir.Write("Cat.xml", CleanCatalog());
    std::string log_ = run_.dir.File("Cat.log");
};

std::string LogOf(const std::string& path, const std::string& text) {
    return WithPath(
        "XML import log file created by Ferrow\n"
        "XML file:\n"
        "@PATH@\n"
        " \n"
        "Parser messages:\n" +
            text +
            "\n"
            "\n"
            "fatal errors: 0  errors: 0  warnings: 0\n"
            "\n"
            "\n"
            "Import of file @PATH@ failed\n"
            "\n"
            "\n",
        path);
}

struct ThrowCase {
    const char* what;
    void (*thrower)();
    /// The end of the text after "Error during parsing '...'" and its line feed.
    std::string rest;
};

TEST_F(ParserExceptions, ParseThatThrowsFailsAndEndsThePlatform) {
    const ThrowCase kCases[] = {
        {"XMLException", ThrowXmlException,
         "Exception message is:\n" + MessageOf<xercesc::XMLException>(ThrowXmlException) + "\n"},
        {"DOMException", ThrowDomException,
         "Exception message is:\n" + MessageOf<xercesc::DOMException>(ThrowDomException) + "\n"},
        {"runtime_error", ThrowRuntimeError, ""},
        {"bad_alloc", ThrowBadAlloc, ""},
        {"an integer", [] { throw 1; }, ""},
    };
    for (const auto& [what, thrower, rest] : kCases) {
        SCOPED_TRACE(what);
        Script script;
        ManagerRun run(std::make_unique<ScriptedReader>(script));
        const std::string path = run.dir.Write("Cat.xml", CleanCatalog());
        const std::string log = run.dir.File("Cat.log");
        script.onRead = [thrower = thrower](ZDOMErrorHandler&) { thrower(); };
        EXPECT_FALSE(run.Import(path, log));
        const std::string text = "Error during parsing '" + path + "'\n" + rest;
        EXPECT_THAT(run.console, ElementsAre(SinkText{"Parsing XML '" + path + "'", 1}, SinkText{text, 1},
                                             SinkText{kEnd, 1}));
        EXPECT_EQ(ReadFile(log), LogOf(path, text));
        EXPECT_EQ(script.stops, 1);
        EXPECT_EQ(run.manager.FindCatalog("Cat"), nullptr);
    }
}

TEST_F(ParserExceptions, ComplaintsCollectedBeforeTheExceptionAreSentToo) {
    script_.onRead = [](ZDOMErrorHandler& handler) {
        handler.warning(xercesc::SAXParseException(ToDomText("careful").c_str(), nullptr,
                                                   ToDomText("Cat.xml").c_str(), 1, 2));
        ThrowRuntimeError();
    };
    EXPECT_FALSE(run_.Import(path_));
    EXPECT_THAT(run_.console,
                ElementsAre(SinkText{"Parsing XML '" + path_ + "'", 1},
                            SinkText{"Error during parsing '" + path_ + "'\n", 1}, SinkText{"Parser:", 1},
                            SinkText{"Warning at file 'Cat.xml': Line: 1, Char: 2\n  Message: careful ", 1},
                            SinkText{kEnd, 1}));
}

TEST_F(ParserExceptions, PlatformThatDoesNotStartFailsTheImport) {
    script_.onStart = ThrowXmlException;
    const std::string text =
        "Error during initialization!\n" + MessageOf<xercesc::XMLException>(ThrowXmlException);
    EXPECT_FALSE(run_.Import(path_, log_));
    EXPECT_THAT(run_.console, ElementsAre(SinkText{"Parsing XML '" + path_ + "'", 1}, SinkText{text, 1},
                                          SinkText{kEnd, 1}));
    EXPECT_EQ(ReadFile(log_), LogOf(path_, text));
    EXPECT_EQ(script_.reads, 0);
    EXPECT_EQ(script_.stops, 0) << "only a parse that throws ends the platform";
}

TEST_F(ParserExceptions, AnyExceptionAtTheStartFailsTheImport) {
    for (void (*thrower)() : {ThrowDomException, ThrowRuntimeError, ThrowBadAlloc}) {
        Script script;
        ManagerRun run(std::make_unique<ScriptedReader>(script));
        const std::string path = run.dir.Write("Cat.xml", CleanCatalog());
        script.onStart = thrower;
        bool ok = true;
        EXPECT_NO_THROW(ok = run.Import(path));
        EXPECT_FALSE(ok);
        EXPECT_EQ(run.CountOfTexts("Error during initialization!"), 1U);
        EXPECT_EQ(script.reads, 0);
    }
}

TEST_F(ParserExceptions, FailedParseIsNotRepeated) {
    script_.onRead = [](ZDOMErrorHandler&) { ThrowRuntimeError(); };
    EXPECT_FALSE(run_.Import(path_));
    EXPECT_FALSE(run_.Import(path_));
    EXPECT_EQ(script_.reads, 1);
}

TEST_F(ParserExceptions, AnotherFileIsImportedAgainAfterwardsIfTheParserCan) {
    script_.onRead = [](ZDOMErrorHandler&) { ThrowRuntimeError(); };
    EXPECT_FALSE(run_.Import(path_));
    EXPECT_FALSE(run_.Import(run_.dir.Write("Other.xml", CleanCatalog())));
    EXPECT_EQ(script_.reads, 2) << "the guard is released on every way out";
}

TEST_F(ParserExceptions, ReaderGetsThePathAndTheValidationSetting) {
    for (const bool validate : {true, false}) {
        SCOPED_TRACE(validate);
        run_.manager.Clear();
        run_.manager.Validate = validate;
        EXPECT_FALSE(run_.Import(path_)) << "no document, no catalog";
        EXPECT_EQ(script_.path, path_);
        EXPECT_EQ(script_.validate, validate);
    }
    EXPECT_EQ(script_.stops, 0);
    EXPECT_GE(script_.releases, 2) << "the document is dropped after each import";
}

TEST_F(ParserExceptions, ErrorReportedWithADocumentFailsTheImport) {
    script_.onRead = [](ZDOMErrorHandler& handler) {
        handler.error(xercesc::SAXParseException(ToDomText("wrong").c_str(), nullptr,
                                                 ToDomText("Cat.xml").c_str(), 3, 4));
    };
    EXPECT_FALSE(run_.Import(path_, log_));
    EXPECT_THAT(run_.console,
                ElementsAre(SinkText{"Parsing XML '" + path_ + "'", 1}, SinkText{"Parser:", 1},
                            SinkText{"Error at file 'Cat.xml': Line: 3, Char: 4\n  Message: wrong ", 1},
                            SinkText{kEnd, 1}));
    EXPECT_EQ(ReadFile(log_), LogOf(path_, "Error at file 'Cat.xml': Line: 3, Char: 4\n  Message: wrong\n"));
    EXPECT_EQ(script_.stops, 0);
}

TEST_F(ParserExceptions, MissingFileDoesNotReachTheParser) {
    EXPECT_FALSE(run_.Import(run_.dir.File("Missing.xml")));
    EXPECT_EQ(script_.starts, 0);
    EXPECT_EQ(script_.reads, 0);
}

}  // namespace
}  // namespace tarvex::test::parser_exceptions_test
