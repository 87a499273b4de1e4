#include "app/front_door.h"

int main(int argc, char** argv) {
    return ostrova::app::FrontDoor({argv + 1, argv + argc});
}
