// tallvex-play: plays what a cashier does, from text files, on the real screens.
#include "common/files.h"
#include "play/program.h"

int main(int argc, char** argv) {
    common::keep_files_from_others();
    return play::run_program(argc, argv);
}
