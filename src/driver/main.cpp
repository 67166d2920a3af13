#include "driver/driver.h"

int main(int argc, char** argv) {
    return tarvex::Run({argv, static_cast<std::size_t>(argc)});
}
