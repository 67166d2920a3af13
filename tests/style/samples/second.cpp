// A fault that the checks must find, beside the first sample; nothing includes or builds this.

#include <string>

bool IsUnnamed(const std::string& name) {
    return name.size() == 0;
}
