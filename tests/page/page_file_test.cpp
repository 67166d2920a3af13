/// The file of a page: one that asks for nothing, the same for equal catalogs, and never half of one.

#include <stdexcept>
#include <string>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "page/chunk_writer.h"
#include "page/page.h"
#include "page/page_of.h"
#include "page/skeleton.h"
#include "page/unpacked_page.h"
#include "support/catalog_import.h"
#include "support/temp_dir.h"

namespace tarvex::test::page_file_test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string SmallCatalog() {
    return CatalogOfParams(Param("Level", "<TNumber/>"));
}

TEST(PageFile, IsTheSameForEqualCatalogs) {
    EXPECT_EQ(PageOf(SmallCatalog()), PageOf(SmallCatalog()));
}

TEST(PageFile, AllowsItsOwnScriptAndStyleAloneAndNoRequest) {
    const std::string page = PageOf(SmallCatalog());
    EXPECT_THAT(page, HasSubstr("content=\"default-src 'none'; script-src 'sha256-"));
    EXPECT_THAT(page, HasSubstr("img-src data:; base-uri 'none'; form-action 'none'\">"));
    for (const char* other : {"unsafe-inline", "unsafe-eval", "https:", "src=", "import", "{{"}) {
        EXPECT_THAT(page.substr(0, page.find("<style>")), Not(HasSubstr(other))) << other;
    }
}

TEST(PageFile, TakesATitleForAText) {
    EXPECT_THAT(page::PageHead("</title><script>alert(\"1\")&\x01{{data}}"),
                HasSubstr("<title>&lt;/title&gt;&lt;script&gt;alert(&quot;1&quot;)&amp;.{{data}}</title>"));
}

TEST(PageFile, HasBytesInLetters) {
    struct Row {
        std::string bytes;
        const char* letters;
    };
    const Row rows[] = {{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xFB\xFF\xFE", "+//+"}};
    for (const Row& row : rows) {
        EXPECT_EQ(page::Base64(row.bytes), row.letters);
    }
}

class PageOutput : public testing::Test {
  protected:
    /// Reads the catalog and writes its page there; what went wrong.
    std::string Write(const std::string& path) const {
        const review::CatalogReading reading(catalog_, {});
        try {
            page::WritePage(reading, path);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    }

    TempDir dir_;
    std::string catalog_ = dir_.Write("Cat.xml", SmallCatalog());
};

TEST_F(PageOutput, ReplacesWhatIsThere) {
    const std::string path = dir_.Write("page.html", "old");
    EXPECT_EQ(Write(path), "");
    EXPECT_THAT(ReadFile(path), testing::StartsWith("<!doctype html>"));
}

TEST_F(PageOutput, IsRefusedWhereNoFileCanBe) {
    for (const std::string& path : {dir_.Path(), dir_.File("missing/page.html"), std::string("/dev/null")}) {
        EXPECT_EQ(Write(path), "can't write '" + path + "'");
    }
}

TEST_F(PageOutput, IsNotWrittenOverTheCatalog) {
    EXPECT_EQ(Write(catalog_), "can't write '" + catalog_ + "': the catalog is read from it");
    EXPECT_EQ(ReadFile(catalog_), SmallCatalog());
}

}  // namespace
}  // namespace tarvex::test::page_file_test
