#include "page/search_index.h"

#include <algorithm>
#include <map>

#include "import/text/utf8.h"
#include "page/json_text.h"

namespace tarvex::page {
namespace {

/// Of a text that is searched, of one with parts, and of a context. The importer keeps 4096 letters of a
/// text, which are all searched.
constexpr std::size_t kMaxText = std::size_t{4096} * 3;
constexpr std::size_t kMaxParts = std::size_t{1} << 20;
constexpr std::size_t kMaxContext = 100;

constexpr std::size_t kContextLetters = sizeof(std::uint32_t);

/// A browser unpacks so much at once without anybody noticing.
constexpr std::size_t kPieceSize = std::size_t{1} << 20;

}  // namespace

std::uint32_t SearchIndex::NumberOfContext(std::string_view context) {
    context = CutAtCharacter(context, kMaxContext);
    if (contexts_[lastContext_] != context) {
        const auto [found, isNew] =
            contextNumbers_.try_emplace(std::string(context), static_cast<std::uint32_t>(contexts_.size()));
        if (isNew) {
            contexts_.emplace_back(context);
        }
        lastContext_ = found->second;
    }
    return lastContext_;
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
    bytesGiven_ += text.size();
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
        bytesGiven_ += text.size();
        MakeKey(0, text);
        const std::string_view line = once_.emplace_back(key_, kContextLetters);
        topics_[static_cast<std::size_t>(topic)].all.push_back({line, 0, {place.Number()}});
    }
}

/// The entry behind the last of those from `begin` on that fit into a piece.
std::size_t SearchIndex::EndOfPiece(const std::vector<Entry>& entries, std::size_t begin) {
    constexpr std::size_t kBytesOfPlace = 3;  // in most cases
    std::size_t size = 0;
    while (begin < entries.size() && size < kPieceSize) {
        size += entries[begin].text.size() + entries[begin].places.size() * kBytesOfPlace;
        ++begin;
    }
    return begin;
}

std::string SearchIndex::PieceOf(std::span<const Entry> entries) const {
    std::vector<std::string_view> lines;
    JsonText places;
    JsonText contexts;
    JsonText contextOf;
    std::map<std::uint32_t, std::size_t> contextNumbers;  // in this piece
    places.BeginArray();
    contexts.BeginArray();
    contextOf.BeginArray();
    for (const Entry& entry : entries) {
        lines.push_back(entry.text);
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
    return json.Key("contextOf").Json(contextOf.EndArray().All()).EndObject().Take();
}

std::vector<Topic> SearchIndex::Write(ChunkWriter& chunks) const {
    std::vector<Topic> pieces;
    for (std::size_t topic = 0; topic < topics_.size(); ++topic) {
        const std::vector<Entry>& all = topics_[topic].all;
        for (std::size_t begin = 0; begin < all.size();) {
            const std::size_t end = EndOfPiece(all, begin);
            const auto entries = std::span(all).subspan(begin, end - begin);
            chunks.Write("search-" + std::to_string(pieces.size()),
                         [this, entries] { return PieceOf(entries); });
            pieces.push_back(static_cast<Topic>(topic));
            begin = end;
        }
    }
    return pieces;
}

}  // namespace tarvex::page
