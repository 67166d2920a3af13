/// Functions that a browser unpacks at once.

#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <utility>

#include "import/text/names.h"
#include "page/looks.h"
#include "review/catalog_reading.h"
#include "review/catalog_texts.h"
#include "review/function_view.h"
#include "review/own_texts.h"

namespace tarvex::page {

/// A name as the catalog writes it, or that of the tree where it comes from elsewhere.
template <class Node>
std::string PeoplesName(const std::string& written, const Node& node) {
    return SanitizeName(written) == node.GetName() && !written.empty() ? written : review::OwnName(node);
}

/// What a page says of a function.
struct FunctionPart {
    explicit FunctionPart(review::FunctionView functionView)
        : view(std::move(functionView)),
          looks(LooksOf(view)),
          texts(review::CatalogTexts::Of(*view.target.function)),
          name(PeoplesName(texts.name, *view.target.function)) {}
    FunctionPart(const FunctionPart&) = delete;
    FunctionPart& operator=(const FunctionPart&) = delete;
    ~FunctionPart() = default;

    const review::FunctionView view;
    const Looks looks;
    const review::FunctionTexts texts;
    const std::string name;
};

/// Functions with their parameters, each of which is in it once.
class FunctionPiece {
  public:
    /// The reading and the messages of the views outlive the piece.
    explicit FunctionPiece(const review::CatalogReading& reading) : reading_(reading) {}

    /// The part is there as long as the piece.
    const FunctionPart& Add(review::FunctionView view) {
        operationCount_ += view.operations.size();
        return parts_.emplace_back(std::move(view));
    }

    bool IsEmpty() const { return parts_.empty(); }
    std::size_t OperationCount() const { return operationCount_; }

    /// The most work of a page; needs nothing that others change.
    std::string Json() const;

  private:
    const review::CatalogReading& reading_;
    std::deque<FunctionPart> parts_;
    std::size_t operationCount_ = 0;
};

}  // namespace tarvex::page
