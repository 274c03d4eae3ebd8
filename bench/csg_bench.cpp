// One cut into landscapes of three sizes, fresh and after a hundred craters. Beside the time each row shows the faces
// before and after and a hash of the result: a change that is only to be faster must leave the hash alone.

#include "csg/solid/csg_mesh.h"
#include "support/solids.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <random>

namespace {

constexpr double landWidth = 200.0;

void cutAt(csgMesh& land, const csgMeshData& ball, double x, double z, benchmark::State* timed) {
    const auto column = columnOf(land, x, z);
    if (column.empty())
        return;
    csgMesh tool;
    tool.build(ball);
    tool.translate(x, column.back().second, z);
    if (timed != nullptr)
        timed->ResumeTiming();
    land.carve(tool);
    land.computeNormals();
    if (timed != nullptr)
        timed->PauseTiming();
}

/// Arguments: cells along a side, craters cut beforehand, subdivisions of the tool.
void carve(benchmark::State& state) {
    const csgMeshData landData = islandData(static_cast<int>(state.range(0)), landWidth, 1);
    const csgMeshData ball = sphereData(static_cast<int>(state.range(2)), state.range(2) == 1 ? 3.5 : 10.0);
    std::size_t before = 0;
    std::size_t after = 0;
    std::uint64_t hash = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto land = std::make_unique<csgMesh>();
        land->build(landData);
        std::mt19937 random(9);
        std::uniform_real_distribution<double> place(-0.4 * landWidth, 0.4 * landWidth);
        for (std::int64_t i = 0; i < state.range(1); ++i) {
            const double x = place(random);
            cutAt(*land, ball, x, place(random), nullptr);
        }
        before = land->countFaces();
        cutAt(*land, ball, 3.0, 5.0, &state);
        after = land->countFaces();
        hash = hashOf(*land);
        land.reset();
        state.ResumeTiming();
    }
    state.counters["before"] = static_cast<double>(before);
    state.counters["after"] = static_cast<double>(after);
    char label[32];
    std::snprintf(label, sizeof label, "hash %016llx", static_cast<unsigned long long>(hash));
    state.SetLabel(label);
}

} // namespace

BENCHMARK(carve)
    ->ArgNames({"cells", "craters", "tool"})
    ->Args({35, 0, 2})
    ->Args({52, 0, 1})
    ->Args({52, 0, 2})
    ->Args({52, 100, 2})
    ->Args({109, 0, 2})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);
