#include "demo/command.h"

int main(int argc, char** argv) {
    return ostrova::demo::RunDemoSite(argc, argv);
}
