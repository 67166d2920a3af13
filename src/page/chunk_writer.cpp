#include "page/chunk_writer.h"

#include <new>
#include <sodium.h>
#include <utility>
#include <zlib.h>

namespace tarvex::page {
namespace {

/// The highest would take three times the time and save a fifth.
constexpr int kLevel = 3;

/// Pieces that wait for their turn take memory.
constexpr std::size_t kMaxWaiting = 8;

std::string ElementOf(const std::string& id, std::string_view json) {
    return "<script type=\"application/octet-stream\" id=\"" + id + "\">" + Base64(Compressed(json)) +
           "</script>\n";
}

}  // namespace

std::string Base64(std::string_view bytes) {
    constexpr int kVariant = sodium_base64_VARIANT_ORIGINAL;
    std::string text(sodium_base64_ENCODED_LEN(bytes.size(), kVariant), '\0');
    sodium_bin2base64(text.data(), text.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      bytes.size(), kVariant);
    text.pop_back();  // the zero at the end
    return text;
}

std::string Compressed(std::string_view bytes) {
    uLongf size = compressBound(bytes.size());
    std::string compressed(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(compressed.data()), &size,
                  reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), kLevel) != Z_OK) {
        throw std::bad_alloc();  // there is room enough for what comes out
    }
    compressed.resize(size);
    return compressed;
}

void ChunkWriter::Write(const std::string& id, std::string json) {
    if (elements_.size() == kMaxWaiting) {
        WriteFirst();
    }
    elements_.push_back(std::async([id, text = std::move(json)] { return ElementOf(id, text); }));
}

void ChunkWriter::Finish() {
    while (!elements_.empty()) {
        WriteFirst();
    }
}

void ChunkWriter::WriteFirst() {
    const std::string element = elements_.front().get();
    elements_.pop_front();
    file_.Append(element);
}

}  // namespace tarvex::page
