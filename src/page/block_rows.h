/// What lists say of the functions of a block.

#pragma once

#include <cstddef>
#include <string>

#include "page/function_piece.h"
#include "page/json_text.h"

namespace tarvex::page {

/// Each member of a function is in a list of its own, since those are alike and compress well.
class BlockRows {
  public:
    /// `functionClass`: the number of its class among those of the catalog.
    void Add(const FunctionPart& part, std::size_t functionClass);
    /// The functions so far that are in no piece yet are in that one.
    void EndPiece(std::size_t piece);
    std::size_t IncompleteCount() const { return incompleteCount_; }
    std::string Json() const;
    /// The beginnings of the descriptions, in the order of the functions; empty when none has one.
    std::string DescriptionsJson() const;

  private:
    void AddName(const FunctionPart& part);

    JsonText ids_;
    JsonText names_;
    JsonText databaseNames_;
    JsonText classes_;
    JsonText opTypes_;
    JsonText faults_;
    JsonText incomplete_;
    JsonText pieces_;
    JsonText descriptions_;
    bool hasDescription_ = false;
    std::size_t count_ = 0;
    std::size_t open_ = 0;
    std::size_t incompleteCount_ = 0;
};

}  // namespace tarvex::page
