#include "cli/entry.h"

int main(int argc, char** argv) {
    return ostrova::cli::Main(argc, argv);
}
