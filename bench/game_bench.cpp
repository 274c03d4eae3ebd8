// The game's own time for a frame on each shipped level, without a GL driver: a quiet one, and the one in which a
// rocket goes off. The argument is the level's place in the level list. Counters: faces of the land, and a hash of it
// (a speed-up that changes the hash is a bug).

#include "support/test_data.h"
#include "support/test_services.h"
#include "support/world_hash.h"

#include "core/app/game_loader.h"
#include "core/scene/scene_node.h"
#include "core/services/timer.h"
#include "game/armoury/rocket.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "platform/crt_random.h"
#include "render/camera/camera.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

/// A shipped level with its teams, as at the start of a round.
struct Island {
    explicit Island(std::size_t index) {
        endRound(); // the empty scene of the services
        crtSrand(1);
        std::vector<std::string> levels;
        readLevelList(levels);
        GameLoader loader;
        loader.loadLevel(levels.at(index));
        name = levels.at(index);
        for (int frame = 0; frame < 100; ++frame)
            services.frame(16);
    }

    /// A point a little above the land, where a falling rocket goes off in the next frame.
    static Vector3 placeForARocket() {
        CollisionPacket probe;
        probe.radius = Vector3(1, 1, 1);
        const auto coordinate = [] {
            return 240.0f * (static_cast<float>(crtRand()) / static_cast<float>(crtRandMax) - 0.5f);
        };
        do {
            probe.worldPosition = Vector3(coordinate(), 200.0f, coordinate());
            probe.worldVelocity = Vector3(0, -1000.0f, 0);
            theModuleManager->getCollisionDetection()->moveToContact(&probe, theModuleManager->getSceneRoot());
        } while (!probe.foundCollision);
        return probe.worldPosition + Vector3(0, 0.5f, 0);
    }

    ShippedData data;
    TestServices services;
    std::string name;
};

void quietFrame(benchmark::State& state) {
    const Island island(static_cast<std::size_t>(state.range(0)));
    state.SetLabel(island.name);
    Camera* const camera = theModuleManager->getCamera();
    for ([[maybe_unused]] auto _ : state) {
        island.services.frame(16);
        camera->apply();
        theModuleManager->getSceneRoot()->render(camera);
    }
    state.counters["faces"] = static_cast<double>(world::landFaces());
}
BENCHMARK(quietFrame)->DenseRange(0, 4)->Unit(benchmark::kMillisecond)->MinWarmUpTime(0.2);

void explosionFrame(benchmark::State& state) {
    const Island island(static_cast<std::size_t>(state.range(0)));
    state.SetLabel(island.name);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        new Rocket(Island::placeForARocket(), Vector3(0, -60, 0.01f), nullptr);
        const std::size_t before = world::landFaces();
        island.services.tick(16);
        state.ResumeTiming();
        theModuleManager->getSceneRoot()->update();
        state.PauseTiming();
        if (world::landFaces() == before)
            state.SkipWithError("the rocket cut nothing");
        for (int frame = 0; frame < 70; ++frame) // explosions end, worms land
            island.services.frame(16);
        state.ResumeTiming();
    }
    state.counters["faces"] = static_cast<double>(world::landFaces());
    state.counters["hash"] = static_cast<double>(world::stateHash() >> 32);
}
BENCHMARK(explosionFrame)->DenseRange(0, 4)->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

BENCHMARK_MAIN();
