/// The data of a page, in pieces that a browser unpacks when it needs them.

#pragma once

#include <deque>
#include <functional>
#include <future>
#include <string>
#include <string_view>

#include "kestrel/atomic_file.h"
#include "page/workers.h"

namespace tarvex::page {

/// Bytes in the letters of base64, which mean nothing to a reader of HTML.
std::string Base64(std::string_view bytes);

/// The bytes compressed, with the header and the checksum of zlib. Equal bytes give equal bytes.
std::string Compressed(std::string_view bytes);

/// Writes pieces of JSON, each as an element of the page that is never executed. They are made and compressed
/// while the caller goes on, and written in their order.
class ChunkWriter {
  public:
    /// The file outlives the writer.
    explicit ChunkWriter(kestrel::AtomicFile& file) : file_(file) {}
    ChunkWriter(const ChunkWriter&) = delete;
    ChunkWriter& operator=(const ChunkWriter&) = delete;
    /// Waits for what is being made; it is not written any more.
    ~ChunkWriter() = default;

    /// `id`: letters, digits and hyphens; a page has it once, behind "data-". `json` is called once, beside
    /// others and beside the caller, and what it needs outlives the writer or its `Finish`.
    void Write(const std::string& id, std::function<std::string()> json);
    void Write(const std::string& id, std::string json);
    /// Writes all that is still being made. Called at the end. Throws what a maker has thrown.
    void Finish();

  private:
    void WriteFirst();

    kestrel::AtomicFile& file_;
    std::deque<std::future<std::string>> elements_;  // that are being made
    Workers workers_;
};

}  // namespace tarvex::page
