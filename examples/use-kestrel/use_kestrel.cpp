// Prints the signals of a database: use-kestrel roadster.vorn
// Without CMake: g++ -std=c++20 use_kestrel.cpp -o use-kestrel $(pkg-config --cflags --libs kestrel)

#include <exception>
#include <iostream>
#include <kestrel/reader.h>

namespace {

void Print(const kestrel::Message& message) {
    for (const kestrel::Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
        std::cout << kestrel::NameIn(message.name) << "." << kestrel::NameIn(signal->name) << ": bit "
                  << signal->start_bit << ", length " << signal->length;
        if (signal->scaling != nullptr) {
            std::cout << ", times " << signal->scaling->factor << " " << signal->scaling->unit;
        }
        std::cout << "\n";
    }
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "Usage: use-kestrel DATABASE\n";
        return 2;
    }
    const auto database = kestrel::ReadDatabase(argv[1]);
    for (const kestrel::Message& message : database->Messages()) {
        Print(message);
    }
} catch (const std::exception& error) {
    std::cerr << "use-kestrel: " << argv[1] << ": " << error.what() << "\n";
    return 2;
}
