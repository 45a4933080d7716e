// tallvex-play: plays what a cashier does, from text files, on the real screens.
#include "play/program.h"

int main(int argc, char** argv) {
    return play::run_program(argc, argv);
}
