// Writes a database with one message to the file that is named on the command line, and reads it back.

#include <cstring>
#include <iostream>
#include <kestrel/kestrel.h>
#include <kestrel/reader.h>

int main(int /*argc*/, char** argv) {
    KestrelWriteManager manager(nullptr);
    const char* database = nullptr;
    manager.CreateDatabase("Cabin", &database, nullptr);
    std::strcpy(manager.CreateMessage(database, 0)->name, "Lamp");
    manager.WriteDatabase(database, argv[1]);
    std::cout << kestrel::ReadDatabase(argv[1])->Messages().front().name << "\n";
}
