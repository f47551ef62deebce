#include "tests/simulation/orders/Orders.h"

int main(int argc, char** argv) {
    return vantrel::simulation::orders({argv + 1, argv + argc});
}
