// The level maker's tool, run the way a shell runs it.

#include "core/file_access.h"
#include "csg/csg_file.h"
#include "support/solids.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

class CsgTool : public testing::Test {
protected:
    void SetUp() override {
        data.writeSolid("land", boxData({-10, -10, -10}, {10, 10, 10}));
        data.writeSolid("ball", sphereData(1, 3.0));
    }

    static Outcome run(const std::string& arguments) {
        const int code = std::system((CSGTOOL " " + arguments + " >out.txt 2>err.txt").c_str());
        Outcome outcome{WEXITSTATUS(code), "", ""};
        readWholeFile("out.txt", outcome.output);
        readWholeFile("err.txt", outcome.errors);
        return outcome;
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
    const Outcome closed = run("info csg/land.csg");
    EXPECT_EQ(closed.status, 0);
    for (const char* line : {"vertices         8\n", "faces            12\n", "volume           8000\n",
                             "area             2400\n", "open edges       0\n", "texture stone\n"})
        EXPECT_NE(closed.output.find(line), std::string::npos) << line << closed.output;

    data.write("csg/open.csg", "1 3 0 0 0 0 0 1 0 0 0 0 0 1 0 0 0 2 0 1 2 0 0 1 rock");
    const Outcome outcome = run("info csg/open.csg");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.output.find("open edges       3\ndegenerate faces 1\n"), std::string::npos) << outcome.output;
}

TEST_F(CsgTool, CutsAtEveryCentreInTurn) {
    data.write("more.txt", "0 -10 0\n-4 0 1");
    const Outcome outcome =
        run("subtract csg/land.csg csg/ball.csg --at 5 10 5 --at -5.5 1e1 -5 --centres more.txt -o out.csg --stats");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 5);
    EXPECT_EQ(outcome.output.rfind("cut 1: faces 12 -> ", 0), 0u) << outcome.output;
    EXPECT_NE(outcome.output.find(", open edges 0, widest gap 0.0e+00\n"), std::string::npos) << outcome.output;

    csgMesh expected;
    build(expected, "csg/land.csg");
    for (const csgVector& c : {csgVector{5, 10, 5}, {-5.5, 10, -5}, {0, -10, 0}, {-4, 0, 1}}) {
        csgMesh ball;
        build(ball, "csg/ball.csg");
        ball.translate(c.x, c.y, c.z);
        expected.carve(ball);
    }
    std::string text;
    ASSERT_TRUE(readWholeFile("out.csg", text));
    EXPECT_EQ(text, writeCsgText(expected, {"stone"}));
    EXPECT_EQ(run("info out.csg").status, 0);
}

TEST_F(CsgTool, ExportsWhatOtherProgramsRead) {
    EXPECT_EQ(run("obj csg/land.csg -o land.obj").status, 0);
    std::string text;
    ASSERT_TRUE(readWholeFile("land.obj", text));
    EXPECT_EQ(text.rfind("v ", 0), 0u);
    EXPECT_NE(text.find("usemtl stone\n"), std::string::npos);
    std::size_t faces = 0;
    for (std::size_t at = text.find("\nf "); at != std::string::npos; at = text.find("\nf ", at + 1))
        ++faces;
    EXPECT_EQ(faces, 12u);
}

TEST_F(CsgTool, OutputKeepsLinksPermissionsAndPipes) {
    namespace fs = std::filesystem;
    ASSERT_EQ(run("obj csg/land.csg -o plain.obj").status, 0);
    std::string whole;
    ASSERT_TRUE(readWholeFile("plain.obj", whole));

    data.write("real.obj", "old");
    fs::permissions("real.obj", fs::perms(0640));
    fs::create_symlink("real.obj", "link.obj");
    EXPECT_EQ(run("obj csg/land.csg -o link.obj").status, 0);
    EXPECT_TRUE(fs::is_symlink("link.obj"));
    std::string text;
    EXPECT_TRUE(readWholeFile("real.obj", text) && text == whole);
    EXPECT_EQ(fs::status("real.obj").permissions(), fs::perms(0640));

    ASSERT_EQ(std::system("mkfifo pipe && (timeout 10 cat pipe >got &) && " CSGTOOL " obj csg/land.csg -o pipe"), 0);
    EXPECT_TRUE(fs::is_fifo("pipe"));
    text.clear();
    for (int tries = 0; tries < 100 && text != whole; ++tries) {
        readWholeFile("got", text);
        usleep(20'000);
    }
    EXPECT_EQ(text, whole);
}

TEST_F(CsgTool, BadInputGivesOneLineAndNoFile) {
    data.write("csg/bad.csg", "1 2 0 0 0 0 0 1 1");
    data.write("centres.txt", "1 2 3 4");
    const std::string cut = "subtract csg/land.csg csg/ball.csg ";
    for (const std::string& arguments :
         {std::string(""), std::string("frobnicate"), std::string("info"), std::string("info csg/missing.csg"),
          std::string("info csg"), std::string("info csg/bad.csg"), cut + "-o new", cut + "--at 1 2 -o new",
          cut + "--at 1 2 x -o new", cut + "--at 1 2 inf -o new", cut + "--at 1 2 3",
          cut + "--centres centres.txt -o new", cut + "--centres missing -o new", cut + "--at 1 2 3 -o missing/new",
          cut + "--at 1 2 3 -o new --quick", std::string("subtract csg/land.csg csg/bad.csg --at 0 0 0 -o new"),
          std::string("obj csg/bad.csg -o new")}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.errors.rfind("csgtool: ", 0), 0u) << arguments;
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << arguments << outcome.errors;
        EXPECT_FALSE(std::filesystem::exists("new")) << arguments;
        EXPECT_FALSE(std::filesystem::exists("new.tmp")) << arguments;
    }
    EXPECT_NE(run("info csg/bad.csg").errors.find("'csg/bad.csg': line 1, part 0: vertex 1: z is missing"),
              std::string::npos);
}
