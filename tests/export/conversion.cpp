#include "export/conversion.h"

#include <gtest/gtest.h>

namespace tarvex::test {
namespace {

std::string Function(std::string_view fktID, std::string_view name, std::string_view kind,
                     std::string_view functionClass, std::string_view param, std::string_view operations) {
    std::string xml =
        "<Function><FunctionID>@ID@</FunctionID><FunctionName>@NAME@</FunctionName>"
        "<FunctionClass><@KIND@><@CLASS@><@PARAM@><ParamName/>"
        "<@PARAM@OPType>@OPERATIONS@</@PARAM@OPType>"
        "<@PARAM@Type><TVoid TypeRef=\"type_void\"/></@PARAM@Type>"
        "</@PARAM@></@CLASS@></@KIND@></FunctionClass></Function>";
    const std::pair<std::string_view, std::string_view> marks[] = {
        {"@ID@", fktID},    {"@NAME@", name},
        {"@KIND@", kind},   {"@CLASS@", functionClass},
        {"@PARAM@", param}, {"@OPERATIONS@", operations},
    };
    for (const auto& [mark, value] : marks) {
        for (std::size_t at = xml.find(mark); at != std::string::npos; at = xml.find(mark)) {
            xml.replace(at, mark.size(), value);
        }
    }
    return xml;
}

}  // namespace

std::string Property(std::string_view fktID, std::string_view name, std::string_view operations) {
    return Function(fktID, name, "Property", "PUnclassified", "PUParam", operations);
}

std::string Method(std::string_view fktID, std::string_view name, std::string_view operations) {
    return Function(fktID, name, "Method", "MUnclassified", "MUParam", operations);
}

std::string Block(std::string_view fBlockID, std::string_view name, std::string_view functions) {
    std::string xml = "<FBlock><FBlockID>";
    xml.append(fBlockID).append("</FBlockID><FBlockName>").append(name).append("</FBlockName>");
    xml += functions.empty() ? Property("0x400", "Volume") : std::string(functions);
    return xml + "</FBlock>";
}

Conversion::Conversion(std::string_view blocks) : imported_(ImportText(CatalogOf(blocks))) {
    EXPECT_TRUE(imported_->ok) << imported_->log;
    output = Dir().File("out.vorn");
}

std::unique_ptr<ZVornExporter> Conversion::Exporter() const {
    return std::make_unique<ZVornExporter>(imported_->catalog, output, FileOf("aliases.txt", aliasNames),
                                           FileOf("network.txt", networkConfiguration), include, exclude,
                                           flags);
}

nlohmann::json Conversion::Database() const {
    EXPECT_EQ(Export(), 0);
    return nlohmann::json::parse(ReadFile(output), nullptr, false);
}

std::string Conversion::FileOf(std::string_view name, const std::string& content) const {
    return content.empty() ? "" : Dir().Write(name, content);
}

std::vector<std::string> NamesIn(const nlohmann::json& list) {
    std::vector<std::string> names;
    for (const nlohmann::json& record : list) {
        names.push_back(record.at("name").get<std::string>());
    }
    return names;
}

nlohmann::json MessageNamed(const nlohmann::json& database, std::string_view name) {
    for (const nlohmann::json& message : database.at("messages")) {
        if (message.at("name") == name) {
            return message;
        }
    }
    ADD_FAILURE() << "no message " << name << " in " << database.at("messages");
    return nlohmann::json::object();
}

}  // namespace tarvex::test
