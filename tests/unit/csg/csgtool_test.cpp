// The level maker's tool, run the way a shell runs it.

#include "core/base/file_access.h"
#include "csg/solid/csg_file.h"
#include "support/solids.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace {

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

class CsgTool : public testing::Test {
protected:
    void SetUp() override {
        data.writeSolid("land", boxData({-10, -9, -8}, {10, 11, 12.5}));
        data.writeSolid("ball", sphereData(1, 3.0));
    }

    static std::string textOf(const char* file) {
        std::string text;
        EXPECT_TRUE(readWholeFile(file, text)) << file;
        return text;
    }

    static Outcome run(const std::string& arguments) {
        const int code = std::system((CSGTOOL " " + arguments + " >out.txt 2>err.txt").c_str());
        return {WEXITSTATUS(code), textOf("out.txt"), textOf("err.txt")};
    }

    static void build(csgMesh& mesh, const std::string& fileName) {
        csgMeshData meshData;
        TextFault fault;
        ASSERT_EQ(readCsgFile(fileName, meshData, fault), csgReadResult::ok) << fault.text;
        mesh.build(meshData);
    }

    TestData data;
};

} // namespace

TEST_F(CsgTool, TellsClosedSolidsFromOpenOnes) {
    data.write("csg/open.csg", "1 3 0 0 0 0 0 1 0 0 0 0 0 2 0 0 0 2 0 1 2 0 0 1 rock");
    data.write("csg/none.csg", "1 0 0 sand");
    const std::tuple<const char*, int, const char*> cases[] = {
        {"land", 0,
         "parts            1\n  part 0         12 faces, texture stone\nvertices         8\nfaces            12\n"
         "bounds           (-10, -9, -8) to (10, 11, 12.5)\nvolume           8200\narea             2440\n"
         "open edges       0\ndegenerate faces 0\nclosed           yes\nbodies           1\n"},
        {"open", 1, "open edges       3\ndegenerate faces 1\nclosed           no\nbodies           1\n"},
        {"none", 1,
         "faces            0\nvolume           0\narea             0\nopen edges       0\n"
         "degenerate faces 0\nclosed           no\nbodies           0\n"}};
    for (const auto& [name, status, output] : cases) {
        const Outcome outcome = run(std::string("info csg/") + name + ".csg");
        EXPECT_EQ(outcome.status, status);
        EXPECT_TRUE(outcome.output.ends_with(output)) << outcome.output;
    }
}

TEST_F(CsgTool, CheckNamesWhatMakesCratersGoWrong) {
    const auto joined = [](std::vector<csgMeshData> bodies) {
        for (std::size_t i = 1; i < bodies.size(); ++i)
            bodies[0].parts.push_back(bodies[i].parts[0]);
        return bodies[0];
    };
    const auto insideOut = [](csgMeshData solid) {
        for (csgMeshData::Triangle& t : solid.parts[0].triangles)
            std::swap(t[0], t[1]);
        return solid;
    };
    const csgMeshData slab = boxData({0, 0, 0}, {30, 4, 20});
    const std::tuple<const char*, csgMeshData, const char*> cases[] = {
        {"apart", joined({slab, boxData({4, 4.001, 4}, {9, 30, 9})}), ""},
        {"cavity", joined({slab, insideOut(boxData({4, 1, 4}, {9, 2, 9}))}), ""},
        {"standing", joined({slab, boxData({14, 9, 4}, {19, 30, 9}), boxData({4, 4, 4}, {9, 30, 10})}),
         "bodies 1 and 3 touch or overlap near (6.5, 4, 7): join them"},
        {"crossing", joined({slab, boxData({4, 3, 4}, {9, 30, 10})}),
         "bodies 1 and 2 touch or overlap near (6.5, 3.5, 7)"},
        {"nested", joined({boxData({4, 1, 4}, {9, 2, 10}), slab}),
         "bodies 1 and 2 touch or overlap near (6.5, 1.5, 7)"},
        {"corner", joined({slab, boxData({30, 4, 20}, {39, 9, 29})}),
         "bodies 1 and 2 touch or overlap near (30, 4, 20)"},
        {"flush", joined({slab, boxData({0, 4, 0}, {30, 9, 20})}),
         "it is not closed: 5 edges have not one face on each side"},
        {"turned", insideOut(slab), "it is turned inside out: flip its faces"}};
    for (const auto& [name, solid, fault] : cases) {
        SCOPED_TRACE(name);
        data.writeSolid(name, solid);
        const std::string file = std::string("csg/") + name + ".csg";
        const Outcome outcome = run("check " + file);
        const bool isGood = *fault == 0;
        EXPECT_EQ(outcome.status, isGood ? 0 : 1) << name;
        EXPECT_EQ(outcome.output.empty(), isGood) << name << outcome.output;
        EXPECT_NE(outcome.output.find(isGood ? "" : file + ": " + fault), std::string::npos) << outcome.output;
        EXPECT_LE(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
    }
}

TEST_F(CsgTool, CutsAtEveryCentreInTurn) {
    data.write("more.txt", "0 -9 0\n-4 0 1");
    for (const std::string finish : {"", " --rough"}) {
        const Outcome outcome = run("subtract csg/land.csg csg/ball.csg --at 5 11 5 --at -5.5 1.1e1 -5 --centres "
                                    "more.txt -o out.csg --stats" +
                                    finish);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        csgMesh expected;
        build(expected, "csg/land.csg");
        std::string line = "cut 0";
        for (const csgVector& c : {csgVector{5, 11, 5}, {-5.5, 11, -5}, {0, -9, 0}, {-4, 0, 1}}) {
            csgMesh ball;
            build(ball, "csg/ball.csg");
            ball.translate(c.x, c.y, c.z);
            expected.carve(ball, finish.empty() ? csgMesh::CarveFinish::closed : csgMesh::CarveFinish::rough);
            ++line.back();
            const csgMesh::CarveStats& stats = expected.getCarveStats();
            EXPECT_NE(outcome.output.find(line + ": faces " + std::to_string(stats.facesBefore) + " -> " +
                                          std::to_string(stats.facesAfter) + ", removed " +
                                          std::to_string(stats.removed)),
                      std::string::npos);
        }
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 5) << outcome.output;
        EXPECT_EQ(outcome.output.find(", open edges 0, widest gap 0.0e+00, ") != std::string::npos, finish.empty())
            << outcome.output;
        EXPECT_EQ(textOf("out.csg"), writeCsgText(expected, {"stone"}));
        EXPECT_EQ(run("info out.csg").status, finish.empty() ? 0 : 1);
    }
}

TEST_F(CsgTool, CutsWhatItHasCutBefore) {
    // A wall 0.003 beside another one: faces that a file cannot hold close the gaps along the rim.
    data.writeSolid("big", sphereData(1, 4.5));
    const std::string nearlyTheSame = "--at 5.003 11.001 5.002 ";
    const Outcome once = run("subtract csg/land.csg csg/big.csg --at 5 11 5 " + nearlyTheSame + "-o once.csg --stats");
    EXPECT_EQ(once.status, 0) << once.errors;
    EXPECT_EQ(once.output.find("slivers joined 0\n"), std::string::npos) << once.output;
    EXPECT_EQ(run("info once.csg").status, 0);
    EXPECT_EQ(run("subtract csg/land.csg csg/big.csg --at 5 11 5 -o first.csg").status, 0);
    EXPECT_EQ(run("subtract first.csg csg/big.csg " + nearlyTheSame + "-o twice.csg").status, 0);
    EXPECT_EQ(textOf("twice.csg"), textOf("once.csg"));
}

TEST_F(CsgTool, ExportsWhatOtherProgramsRead) {
    data.write("csg/two.csg", "2 3 1 2 3 0.5 0.25 4 2 3 0.125 4 1 5 3 7 6 1 0 1 2 rock\n"
                              "3 4 2 3 8 9 4 5 3 10 1 1 5 3 11 12 1 2 0 1 sand");
    EXPECT_EQ(run("obj csg/two.csg -o two.obj").status, 0);
    EXPECT_EQ(textOf("two.obj"), "v 1 5 3\nv 4 2 3\nv 1 2 3\nv 4 5 3\n"
                                 "g part0\nusemtl rock\nvt 0.5 0.25\nvt 0.125 4\nvt 7 6\nf 3/1 2/2 1/3\n"
                                 "g part1\nusemtl sand\nvt 11 12\nvt 8 9\nvt 10 1\nf 1/4 2/5 4/6\n");
}

TEST_F(CsgTool, OutputKeepsLinksPermissionsAndPipes) {
    namespace fs = std::filesystem;
    ASSERT_EQ(run("obj csg/land.csg -o plain.obj").status, 0);
    const std::string whole = textOf("plain.obj");

    data.write("real.obj", "old");
    fs::permissions("real.obj", fs::perms(0640));
    fs::create_symlink("real.obj", "link.obj");
    EXPECT_EQ(run("obj csg/land.csg -o link.obj").status, 0);
    EXPECT_TRUE(fs::is_symlink("link.obj"));
    EXPECT_EQ(textOf("real.obj"), whole);
    EXPECT_EQ(fs::status("real.obj").permissions(), fs::perms(0640));

    ASSERT_EQ(std::system("mkfifo pipe && (timeout 10 cat pipe >got &) && " CSGTOOL " obj csg/land.csg -o pipe"), 0);
    EXPECT_TRUE(fs::is_fifo("pipe"));
    std::string text;
    for (int tries = 0; tries < 100 && !(readWholeFile("got", text) && text == whole); ++tries)
        usleep(20'000);
    EXPECT_EQ(text, whole);
}

TEST_F(CsgTool, BadInputGivesOneLineAndNoFile) {
    data.write("csg/bad.csg", "1 2 0 0 0 0 0 1 1");
    data.write("centres.txt", "1 2 3\n4 5");
    const std::string cut = "subtract csg/land.csg csg/ball.csg ";
    const std::pair<std::string, const char*> cases[] = {
        {"", ""},
        {"frobnicate", "'frobnicate' is none of info, check, subtract and obj"},
        {"info", "FILE is required"},
        {"info csg", "'csg' does not end in .csg"},
        {"info csg/missing.csg", "cannot open 'csg/missing.csg'"},
        {"info csg/bad.csg", "csg/bad.csg:1: part 0: vertex 1: z is missing"},
        {cut + "-o new", "no centre given"},
        {cut + "--at 1 2 -o new", "--at"},
        {cut + "--at 1 2 x -o new", "--at"},
        {cut + "--at 1 2 inf -o new", "a centre is out of range"},
        {cut + "--at 1 2 3", "-o is required"},
        {cut + "--centres centres.txt -o new", "'centres.txt', line 2: a centre is three numbers"},
        {cut + "--centres missing -o new", "cannot read 'missing'"},
        {cut + "--at 1 2 3 -o missing/new", "cannot write 'missing/new'"},
        {cut + "--at 1 2 3 -o new --quick", "--quick"},
        {"subtract csg/land.csg csg/bad.csg --at 0 0 0 -o new", "csg/bad.csg:1: "},
        {"obj csg/bad.csg -o new", "csg/bad.csg:1: "},
    };
    for (const auto& [arguments, reason] : cases) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_TRUE(outcome.errors.starts_with("csgtool: ")) << arguments;
        EXPECT_NE(outcome.errors.find(reason), std::string::npos) << arguments << ": " << outcome.errors;
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << arguments << outcome.errors;
        for (const auto& entry : std::filesystem::directory_iterator("."))
            EXPECT_FALSE(entry.path().filename().string().starts_with("new")) << arguments;
    }
}
