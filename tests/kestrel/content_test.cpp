/// What files are, by what stands in them.

#include "kestrel/content.h"

#include <string>

#include <gtest/gtest.h>

#include "full_database.h"
#include "support.h"

namespace {

using kestrel::Content;

struct ContentCase {
    std::string text;
    Content content;
};

const ContentCase kContentCases[] = {
    {"", Content::Empty},
    {"{\n\"format\": \"Vorn\"", Content::Vorn},
    {"\xEF\xBB\xBF \t\r\n{\"format\": \"Vorn\"", Content::Vorn},
    {"{\"format\":\"Vorn\"", Content::Vorn},
    {"{\"format\" :\n\"Vorn\"", Content::Vorn},
    {"{\"format\": \"Born\"}", Content::OtherJson},
    {"{\"format\": \"Vor", Content::OtherJson},
    {"{\"tool\": \"Vorn\"}", Content::OtherJson},
    {"{\"version\": 1, \"format\": \"Vorn\"}", Content::OtherJson},
    {"{\"format\": {\"const\": \"Vorn\"}}", Content::OtherJson},
    {"{\"Vorn\": \"format\"}", Content::OtherJson},
    {"{" + std::string(1100, ' ') + "\"Vorn\"", Content::OtherJson},
    {"[\"Vorn\"]", Content::Other},
    {"<a/>", Content::OtherXml},
    {"\n\xEF\xBB\xBF<a/>", Content::Other},
    {"\xEF\xBB\xBF<a/>", Content::OtherXml},
    {std::string("\xFF\xFE<\0a\0/\0>\0", 10), Content::OtherXml},
    {std::string("\xFE\xFF\0<\0a\0/\0>", 10), Content::OtherXml},
    {"<?xml version=\"1.0\"?>\n<NetworkDefinition xmlns=\"", Content::Kcd},
    {"<NetworkDefinition>", Content::Kcd},
    {"<NetworkDefinition/>", Content::Kcd},
    {"<?xml version=\"1.0\"?><!-- of <a> -->\n<!DOCTYPE NetworkDefinition>\n<NetworkDefinition\n",
     Content::Kcd},
    {"<!-- <NetworkDefinition> -->\n<a/>", Content::OtherXml},
    {"<!-- <NetworkDefinition>", Content::OtherXml},
    {"<?xml <NetworkDefinition>", Content::OtherXml},
    {"<!DOCTYPE NetworkDefinition>\n<a/>", Content::OtherXml},
    {"<a><NetworkDefinition/></a>", Content::OtherXml},
    {"<NetworkDefinitions>", Content::OtherXml},
    {"<NetworkDefinition", Content::OtherXml},
    {"SQLite format 3", Content::Other},
    {std::string("SQLite format 3\0", 16), Content::OtherSqlite},
    {std::string("SQLite format 3\0", 16) + std::string(52, '\0') + "VORN", Content::Sqlite},
    {std::string("SQLite format 3\0", 16) + std::string(52, '\0') + "VOR", Content::OtherSqlite},
    {"address,fblock,function\r\n", Content::Other},
    {"hello", Content::Other},
};

class ContentOfFile : public FullDatabase {};

TEST_F(ContentOfFile, IsToldByItsBeginning) {
    for (const auto& [text, content] : kContentCases) {
        MakeFile(directory_ / "file", text);
        EXPECT_EQ(kestrel::ContentOf(directory_ / "file"), content) << testing::PrintToString(text);
    }
}

TEST_F(ContentOfFile, IsThatOfTheFormatThatWasWritten) {
    const std::pair<const char*, Content> kWritten[] = {{"a.vorn", Content::Vorn},
                                                        {"a.db", Content::Sqlite},
                                                        {"a.kcd", Content::Kcd},
                                                        {"a.csv", Content::Csv}};
    for (const auto& [name, content] : kWritten) {
        EXPECT_EQ(kestrel::ContentOf(WriteAs(name)), content) << name;
    }
}

TEST_F(ContentOfFile, OfNoFileIsAnError) {
    EXPECT_THROW(kestrel::ContentOf(directory_ / "none"), kestrel::ReadError);
    EXPECT_THROW(kestrel::ContentOf(directory_.Path()), kestrel::ReadError);
}

}  // namespace
