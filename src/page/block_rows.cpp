#include "page/block_rows.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "import/text/utf8.h"

namespace tarvex::page {
namespace {

/// As much as a line of a table has room for.
std::string Shortened(std::string_view text) {
    constexpr std::size_t kMaxCharacters = 160;
    if (text.size() <= kMaxCharacters) {
        return std::string(text);
    }
    std::string_view rest = text;
    for (std::size_t count = 0; count < kMaxCharacters && !rest.empty(); ++count) {
        TakeCharacter(rest);
    }
    std::string shortened(text.substr(0, text.size() - rest.size()));
    return rest.empty() ? shortened : shortened + "\u2026";
}

}  // namespace

void BlockRows::Add(const FunctionPart& part, std::size_t functionClass) {
    std::uint64_t opTypes = 0;
    bool isIncomplete = false;
    for (const review::OperationView& operation : part.view.operations) {
        opTypes |= std::uint64_t{1} << operation.address.opType;
        isIncomplete = isIncomplete || operation.layout == Layout::Incomplete;
    }
    ids_.Number(part.view.target.function->FunctionID());
    AddName(part);
    classes_.Number(functionClass);
    opTypes_.Number(opTypes);
    faults_.Number(part.view.faults.size());
    incomplete_.Number(isIncomplete ? 1 : 0);
    descriptions_.Text(Shortened(part.texts.description));
    hasDescription_ = hasDescription_ || !part.texts.description.empty();
    ++count_;
    ++open_;
    incompleteCount_ += isIncomplete ? 1 : 0;
}

/// Those of databases stand behind the place of their function: most are the same.
void BlockRows::AddName(const FunctionPart& part) {
    const std::string& inDatabases = part.view.target.function->GetName();
    names_.Text(part.name);
    if (inDatabases != part.name) {
        databaseNames_.Number(count_).Text(inDatabases);
    }
}

void BlockRows::EndPiece(std::size_t piece) {
    if (open_ > 0) {
        pieces_.Number(piece).Number(std::exchange(open_, 0));
    }
}

std::string BlockRows::Json() const {
    std::string json;
    const auto add = [&](const char* name, const JsonText& list) {
        json.append(json.empty() ? "{\"" : ",\"").append(name).append("\":[");
        json.append(list.All()).append("]");
    };
    add("ids", ids_);
    add("names", names_);
    if (databaseNames_.Size() > 0) {
        add("databaseNames", databaseNames_);
    }
    add("classes", classes_);
    add("opTypes", opTypes_);
    add("faults", faults_);
    add("incomplete", incomplete_);
    add("pieces", pieces_);
    return json + "}";
}

std::string BlockRows::DescriptionsJson() const {
    return hasDescription_ ? "[" + descriptions_.All() + "]" : "";
}

}  // namespace tarvex::page
