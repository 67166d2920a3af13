#include "page/looks.h"

#include <algorithm>
#include <cstring>

namespace tarvex::page {
namespace {

using review::OperationView;

bool IsSameScaling(const sigscale* a, const sigscale* b) {
    return a == b || (a != nullptr && b != nullptr && *a == *b);
}

bool IsSameSignal(const kestrel::Signal& a, const kestrel::Signal& b) {
    return a.start_bit == b.start_bit && a.length == b.length && a.flags == b.flags &&
           a.multiplexer_value == b.multiplexer_value && std::memcmp(a.name, b.name, sizeof(a.name)) == 0 &&
           IsSameScaling(a.scaling, b.scaling);
}

bool IsSameEnd(const std::optional<vorn::OpenEnd>& a, const std::optional<vorn::OpenEnd>& b) {
    return a.has_value() == b.has_value() && (!a || (a->letter == b->letter && a->remark == b->remark));
}

bool LooksLike(const OperationView& a, const OperationView& b) {
    if (a.message->length != b.message->length || !IsSameEnd(a.end, b.end)) {
        return false;
    }
    const kestrel::Signal* signal = a.message->firstSignal;
    const kestrel::Signal* other = b.message->firstSignal;
    while (signal != nullptr && other != nullptr && IsSameSignal(*signal, *other)) {
        signal = signal->next;
        other = other->next;
    }
    return signal == nullptr && other == nullptr;
}

}  // namespace

Looks LooksOf(const review::FunctionView& view) {
    Looks looks;
    for (const OperationView& operation : view.operations) {
        std::optional<std::size_t>& number = looks.numbers.emplace_back();
        if (operation.message == nullptr) {
            continue;
        }
        const auto found = std::ranges::find_if(
            looks.all, [&](const OperationView* other) { return LooksLike(*other, operation); });
        number = static_cast<std::size_t>(found - looks.all.begin());
        if (found == looks.all.end()) {
            looks.all.push_back(&operation);
        }
    }
    return looks;
}

}  // namespace tarvex::page
