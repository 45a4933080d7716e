// Makes the shop that the tests of a run copy: make-model-shop FILE
#include <filesystem>

#include "support/shop.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    std::filesystem::remove(argv[1]);
    test::make_model_shop(argv[1]);
}
