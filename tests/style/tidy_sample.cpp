// Two faults that the checks must find; nothing includes or builds this.

#include <string>

bool IsUnnamed(const std::string& name) {
    int* leak = new int(1);
    return name.size() == 0 && leak != nullptr;
}
