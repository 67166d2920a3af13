#include "catalog/function.h"

#include "catalog/import_context.h"
#include "catalog/parameter_assignment.h"
#include "import/log/messages.h"
#include "import/text/parse_value.h"
#include "import/xml/element.h"

namespace tarvex {
namespace {

constexpr const char* kArrayClasses[] = {"class_dynamic_array", "class_long_array"};
constexpr const char* kRecordArrayClasses[] = {"class_dynamic_array_of_record", "class_long_array_of_record"};

template <std::size_t kCount>
bool IsOneOf(const std::string& name, const char* const (&names)[kCount]) {
    return std::ranges::any_of(names, [&](const char* candidate) { return NamesEqual(name, candidate); });
}

}  // namespace

ZMTFunction::ZMTFunction(const std::string& paramDefId, std::uint32_t index)
    : ZMTNodeKind(kErrorFunctionPrefix + paramDefId),
      functionID_(index),
      classKind_(ClassKind::ErrorFunction) {}

bool ZMTFunction::Import(const Element& element, ImportContext& context) {
    element_ = &element;
    std::string text;
    if (GetAttribute(element, "FktDefRef", text)) {
        return ImportCopy(element, text, context);
    }
    if (!ImportHead(element, context)) {
        return false;
    }
    const Element* functionClass = FindChildElement(&element, "FunctionClass");
    if (functionClass == nullptr) {
        return Raise<kFunctionWithoutClass>(context.At(element), "FunctionClass");
    }
    if (!ImportClass(*functionClass, context)) {
        return false;
    }
    if (GetAttribute(element, "FktDefId", text) && !text.empty()) {
        context.functions.Register(text, *this);
    }
    return true;
}

bool ZMTFunction::ImportErrorFunction(const Element& element, ImportContext& context) {
    element_ = &element;
    return ParameterAssignment(*this, context).ImportErrorFunction(element);
}

bool ZMTFunction::ImportCopy(const Element& element, const std::string& fktDefRef, ImportContext& context) {
    const ZMTNode* definition = context.functions.Find(fktDefRef);
    if (definition == nullptr) {
        return Raise<kFktDefRefUnknown>(context.At(element_), fktDefRef);
    }
    if (!definition->IsType(kFunction)) {
        return Raise<kCopiedFunctionFailed>(context.At(element_), "Function");
    }
    // Looked at before the copy is made: a copy that has no place would be made in vain.
    const auto& function = static_cast<const ZMTFunction&>(*definition);
    const std::uint32_t id = function.FunctionID();
    ZMTNode* const block = GetParent();
    SetName(function.GetName());
    // An error function counts without a limit, so its number need not be a FunctionID.
    if (id >= kFunctionIDEnd) {
        return Raise<kCopiedFunctionFailed>(context.At(element_), "Function");
    }
    if (block != nullptr && block->GetChild(id) != nullptr) {
        return Raise<kCopiedFunctionIdTwice>(context.At(element_), id);
    }
    if (block != nullptr && block->FindChild(GetName()) != nullptr) {
        return Raise<kCopiedFunctionNameTwice>(context.At(element_), GetName());
    }
    const bool isCopied = context.copies.TakeFor(*definition) && CopyFrom(definition);
    SetParent(block);
    element_ = &element;
    if (!isCopied) {
        return Raise<kFktDefNotCopied>(context.At(element_));
    }
    return true;
}

bool ZMTFunction::ImportHead(const Element& element, ImportContext& context) {
    std::string text;
    if (!GetChildElementText(element, "FunctionName", text)) {
        return Raise<kFunctionWithoutName>(context.AtChild(element, "FunctionName"), "FunctionName");
    }
    SetName(SanitizeName(text));
    if (!GetChildElementText(element, "FunctionID", text)) {
        return Raise<kFunctionWithoutId>(context.AtChild(element, "FunctionID"), "FunctionID");
    }
    std::int32_t id = 0;
    if (!ParseInteger(text, id)) {
        return Raise<kFunctionIdUnreadable>(context.AtChild(element, "FunctionID"), text);
    }
    if (id < 0 || id >= kFunctionIDEnd) {
        return Raise<kFunctionIdOutOfRange>(context.AtChild(element, "FunctionID"), id, 0, kFunctionIDEnd);
    }
    functionID_ = static_cast<std::uint32_t>(id);
    const ZMTNode* block = GetParent();
    if (block != nullptr && block->GetChild(functionID_) != nullptr) {
        return Raise<kFunctionIdTwice>(context.AtChild(element, "FunctionID"), functionID_);
    }
    if (block != nullptr && block->FindChild(GetName()) != nullptr) {
        return Raise<kFunctionNameTwice>(context.AtChild(element, "FunctionName"), GetName());
    }
    return true;
}

bool ZMTFunction::ImportClass(const Element& functionClass, ImportContext& context) {
    std::string classRef;
    GetAttribute(functionClass, "ClassRef", classRef);
    if (IsOneOf(classRef, kArrayClasses)) {
        Raise<kArrayClassUnsupported>(context.At(functionClass), classRef);
    } else if (IsOneOf(classRef, kRecordArrayClasses)) {
        return Raise<kRecordArrayClassUnsupported>(context.At(functionClass), classRef);
    }
    if (ParameterAssignment(*this, context).ImportFunctionClass(functionClass)) {
        return true;
    }
    if (classKind_ == ClassKind::Property || classKind_ == ClassKind::Method) {
        Raise<kParamsWithdrawn>(context.At(functionClass));
        WithdrawParameters();
        return true;
    }
    return Raise<kFunctionClassFailed>(context.At(functionClass), "FunctionClass");
}

bool ZMTFunction::Resolve(ImportContext& context) {
    if (!ZMTNode::Resolve(context)) {
        return false;
    }
    for (unsigned opType = 0; opType < Size(); ++opType) {
        ZMTOperation* operation = GetAt(opType);
        if (operation != nullptr && !operation->Resolve(context)) {
            Raise<kOperationFailed>(context.At(element_), operation->GetName());
            NoteLoss(opType, {HoleCause::Lost, std::nullopt, kOperationFailed.number}, context);
            DeleteRange(opType, opType);
        }
    }
    if (Count() == 0) {
        Raise<kFunctionEmpty>(context.At(element_));
    }
    return true;
}

bool ZMTFunction::Dump(ZMostTreeLog& treeLog) const {
    DumpLine(treeLog, "FUNCTION: " + GetName());
    DumpLine(treeLog, FormatText(".FunctionID: 0x%03X", functionID_));
    DumpBaseLines(treeLog);
    DumpAll(treeLog);
    return true;
}

ZMTOperation& ZMTFunction::OperationAt(unsigned opType) {
    if (ZMTOperation* operation = GetAt(opType)) {
        return *operation;
    }
    auto operation = std::make_unique<ZMTOperation>(classKind_, opType);
    operation->SetParent(this);
    ZMTOperation& result = *operation;
    SetAt(std::move(operation), opType);
    return result;
}

void ZMTFunction::NoteLoss(unsigned opType, const Hole& hole, ImportContext& context) {
    if (losses_.Note(opType, hole) && !context.run.Take({0, Losses::kLossBytes, 0})) {
        throw AllowanceSpent();
    }
}

void ZMTFunction::WithdrawParameters() {
    for (ZMTOperation& operation : Items()) {
        operation.Clear();
    }
}

}  // namespace tarvex
