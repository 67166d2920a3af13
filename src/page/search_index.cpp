#include "page/search_index.h"

#include <algorithm>
#include <map>

#include "import/text/utf8.h"
#include "page/json_text.h"

namespace tarvex::page {
namespace {

/// Of a text that is searched, of one with parts, and of a context.
constexpr std::size_t kMaxText = 4000;
constexpr std::size_t kMaxParts = std::size_t{1} << 20;
constexpr std::size_t kMaxContext = 100;

constexpr std::size_t kContextLetters = sizeof(std::uint32_t);

/// A browser unpacks so much at once without anybody noticing.
constexpr std::size_t kPieceSize = std::size_t{1} << 20;

}  // namespace

std::uint32_t SearchIndex::NumberOfContext(std::string_view context) {
    context = CutAtCharacter(context, kMaxContext);
    const auto found = contextNumbers_.find(context);
    if (found != contextNumbers_.end()) {
        return found->second;
    }
    const auto number = static_cast<std::uint32_t>(contexts_.size());
    contexts_.emplace_back(context);
    contextNumbers_.emplace(context, number);
    return number;
}

/// The context's number in a fixed number of letters, and the text in one line.
void SearchIndex::MakeKey(std::uint32_t context, std::string_view text) {
    std::array<char, kContextLetters> letters{};
    for (char& letter : letters) {
        letter = static_cast<char>(context & 0xFFU);
        context >>= 8;
    }
    key_.assign(letters.data(), letters.size())
        .append(CutAtCharacter(text, text.find(kPartEnd) == std::string_view::npos ? kMaxText : kMaxParts));
    std::replace(key_.begin() + kContextLetters, key_.end(), '\n', ' ');
}

void SearchIndex::Add(Topic topic, std::string_view text, std::string_view context, Place place) {
    if (text.empty()) {
        return;
    }
    Entries& entries = topics_[static_cast<std::size_t>(topic)];
    const std::uint32_t contextNumber = NumberOfContext(context);
    MakeKey(contextNumber, text);
    auto found = entries.byKey.find(key_);
    if (found == entries.byKey.end()) {
        found = entries.byKey.emplace(key_, static_cast<std::uint32_t>(entries.all.size())).first;
        entries.all.push_back({std::string_view(found->first).substr(kContextLetters), contextNumber, {}});
    }
    std::vector<std::uint32_t>& places = entries.all[found->second].places;
    if (places.empty() || places.back() != place.Number()) {
        places.push_back(place.Number());
    }
}

void SearchIndex::AddOnce(Topic topic, std::string_view text, Place place) {
    if (!text.empty()) {
        MakeKey(0, text);
        const std::string_view line = once_.emplace_back(key_, kContextLetters);
        topics_[static_cast<std::size_t>(topic)].all.push_back({line, 0, {place.Number()}});
    }
}

/// Entries from `begin` on, as many as fit into a piece; returns where the next one begins.
std::size_t SearchIndex::WriteOne(ChunkWriter& chunks, std::size_t number, Topic topic,
                                  std::size_t begin) const {
    const std::vector<Entry>& all = topics_[static_cast<std::size_t>(topic)].all;
    std::vector<std::string_view> lines;
    std::size_t size = 0;
    JsonText places;
    JsonText contexts;
    JsonText contextOf;
    std::map<std::uint32_t, std::size_t> contextNumbers;  // in this piece
    places.BeginArray();
    contexts.BeginArray();
    contextOf.BeginArray();
    std::size_t end = begin;
    for (; end < all.size() && size + places.Size() < kPieceSize; ++end) {
        const Entry& entry = all[end];
        lines.push_back(entry.text);
        size += entry.text.size() + 1;
        const auto [context, isNew] = contextNumbers.try_emplace(entry.context, contextNumbers.size());
        if (isNew) {
            contexts.Text(contexts_[entry.context]);
        }
        contextOf.Number(context->second);
        places.Number(entry.places.size());
        std::uint32_t before = 0;
        for (const std::uint32_t place : entry.places) {
            places.Number(place - before);  // small numbers are short
            before = place;
        }
    }
    JsonText json;
    json.BeginObject().Key("lines").Lines(lines).Key("places").Json(places.EndArray().All());
    json.Key("contexts").Json(contexts.EndArray().All());
    json.Key("contextOf").Json(contextOf.EndArray().All()).EndObject();
    chunks.Write("search-" + std::to_string(number), json.Take());
    return end;
}

std::vector<Topic> SearchIndex::Write(ChunkWriter& chunks) const {
    std::vector<Topic> pieces;
    for (std::size_t place = 0; place < topics_.size(); ++place) {
        const auto topic = static_cast<Topic>(place);
        for (std::size_t begin = 0; begin < topics_[place].all.size();) {
            begin = WriteOne(chunks, pieces.size(), topic, begin);
            pieces.push_back(topic);
        }
    }
    return pieces;
}

}  // namespace tarvex::page
