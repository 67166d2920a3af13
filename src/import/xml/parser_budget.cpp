#include "import/xml/parser_budget.h"

#include <algorithm>
#include <exception>
#include <memory>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLRefInfo.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "import/xml/name_buckets.h"

namespace tarvex {
namespace {

/// What the parser asks for to make one of these: in front of each object it keeps where the memory is from.
template <class T>
bool IsSizeOf(std::size_t size) {
    static const std::size_t front =
        xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*));
    return size == front + sizeof(T);
}

}  // namespace

/// With the header. The pools of the library align blocks only as far as their size does.
std::size_t ParserBudget::BlockSize(std::size_t size) {
    return sizeof(Header) + (size + alignof(Header) - 1) / alignof(Header) * alignof(Header);
}

ParserBudget::~ParserBudget() {
    while (kept_ != nullptr) {
        Free(std::exchange(kept_, kept_->nextKept));
    }
}

void ParserBudget::AddContent(std::size_t characters) {
    content_ += characters;
    if (content_ > kContent.For(input_) + contentPaidBack_) {
        Stop("the document's content is more than " + std::to_string(kContent.amount) +
             " times as long as its files");
    }
}

void ParserBudget::AddElement(std::size_t depth, std::size_t characters) {
    if (depth > kMaxDepth) {
        Stop("the elements of the document are more than " + std::to_string(kMaxDepth) + " levels deep");
    }
    AddEvent(characters);
}

void ParserBudget::AddEntity(bool isParameterEntity, std::size_t length) {
    std::size_t& longest = isParameterEntity ? longestParameterEntity_ : longestEntity_;
    longest = std::max(longest, length);
}

void ParserBudget::AddReference(std::size_t length) {
    contentPaidBack_ += longestEntity_;
    AddContent(length);
}

void ParserBudget::AddName(bool hasRoom) {
    if (!hasRoom) {
        Stop("more than " + std::to_string(NameBuckets::kMostNames) +
             " names of the document are too much alike for the tables of the parser");
    }
}

void ParserBudget::StartDtd() {
    isInDtd_ = true;
    modelParts_ = 0;
}

void ParserBudget::EndDeclaration() {
    AddSquare(std::exchange(modelParts_, 0));
}

void ParserBudget::AddSquare(std::size_t parts) {
    squares_ += parts * parts;
    if (squares_ > kMaxSquares) {
        Stop("the content models and lists of words of the DTD are too large");
    }
}

void* ParserBudget::allocate(XMLSize_t size) {
    CountParts(size);
    CheckMemory(size);
    auto* header = static_cast<Header*>(memory_.allocate(BlockSize(size)));
    std::construct_at(header, Header{size, nullptr});
    allocated_ += size;
    return header + 1;
}

void ParserBudget::CheckMemory(std::size_t more) {
    if (allocated_ + more > kMemory.For(input_)) {
        Stop("the document needs more than " + std::to_string(kMemory.amount) +
             " times the memory of its files");
    }
}

void ParserBudget::AddMemory(std::size_t bytes) {
    CheckMemory(bytes);
    allocated_ += bytes;
}

void ParserBudget::CountEntity() {
    const std::size_t most = kEntities.For(input_);
    if (++entities_ > most) {
        Stop("the document uses entities more than " + std::to_string(most) + " times");
    }
    AddContent(isInDtd_ ? longestParameterEntity_ : longestEntity_);
}

void ParserBudget::CountParts(std::size_t size) {
    if (IsSizeOf<xercesc::XMLReader>(size)) {
        CountEntity();
    }
    if (!isInDtd_ && (IsSizeOf<xercesc::XMLAttr>(size) || IsSizeOf<xercesc::XMLRefInfo>(size)) &&
        ++tagParts_ > kMaxTagParts) {
        Stop("an element of the document has more than " + std::to_string(kMaxTagParts) +
             " attributes or references");
    }
    if (isInDtd_ && IsSizeOf<xercesc::ContentSpecNode>(size) && ++modelParts_ > kMaxModelParts) {
        Stop("a content model of the DTD has more than " + std::to_string(kMaxModelParts) + " parts");
    }
}

void ParserBudget::deallocate(void* memory) {
    if (memory == nullptr) {
        return;
    }
    Header* header = static_cast<Header*>(memory) - 1;
    if (std::uncaught_exceptions() > 0) {
        header->nextKept = std::exchange(kept_, header);
    } else {
        allocated_ -= header->size;
        Free(header);
    }
}

void ParserBudget::Free(Header* header) {
    memory_.deallocate(header, BlockSize(header->size));
}

xercesc::MemoryManager* ParserBudget::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

void ParserBudget::Stop(std::string reason) {
    if (excess_) {
        return;
    }
    excess_ = ParserStop{std::move(reason), {}, 0, 0};
    if (locator_ != nullptr) {
        excess_->systemId = locator_->getSystemId() != nullptr ? locator_->getSystemId() : u"";
        excess_->line = locator_->getLineNumber();
        excess_->column = locator_->getColumnNumber();
    }
    throw ParserStop(*excess_);
}

}  // namespace tarvex
