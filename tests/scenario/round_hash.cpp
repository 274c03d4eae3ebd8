// Prints the hash of the world after a whole round on the shipped data with a seed given as the argument (1 without
// one).

#include "support/test_data.h"
#include "support/whole_round.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
    const ShippedData data;
    RoundRecord record;
    const unsigned seed = argumentCount > 1 ? static_cast<unsigned>(std::strtoul(arguments[1], nullptr, 10)) : 1u;
    const int status = playWholeRound(seed, record);
    std::printf("%016" PRIx64 " after %u turns\n", record.stateHash, record.turns);
    return status;
}
