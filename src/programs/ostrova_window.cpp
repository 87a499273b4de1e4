#include "window/program.h"

int main(int /*argc*/, char** argv) {
    return ostrova::window::RunProgram(argv[0]);
}
