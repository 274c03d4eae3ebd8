#include "csg/csg_file.h"
#include "csg/csg_mesh.h"
#include "support/solids.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* tetrahedron = "1\n4\n0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n0 0 1 1 1\n"
                                    "4\n0 2 1\n0 1 3\n0 3 2\n1 2 3\nstone\n";

std::string faultOf(const std::string& text) {
    csgMeshData data;
    TextFault fault;
    EXPECT_EQ(readCsgText(text, data, fault), csgReadResult::malformed) << text;
    return "line " + std::to_string(fault.line) + ", " + fault.text;
}

csgMeshData dataOf(const std::string& text) {
    csgMeshData data;
    TextFault fault;
    EXPECT_EQ(readCsgText(text, data, fault), csgReadResult::ok) << fault.text;
    return data;
}

std::vector<std::string> textureNamesOf(const csgMeshData& data) {
    std::vector<std::string> names;
    for (const csgMeshData::Part& part : data.parts)
        names.push_back(part.texture);
    return names;
}

/// What a round trip has to keep: every face's bits in the order of parts and faces. The order of vertices may change.
void expectSameFaces(const csgMesh& a, const csgMesh& b) {
    ASSERT_EQ(a.getParts().size(), b.getParts().size());
    for (std::size_t p = 0; p < a.getParts().size(); ++p) {
        ASSERT_EQ(a.getParts()[p].size(), b.getParts()[p].size());
        for (std::size_t i = 0; i < a.getParts()[p].size(); ++i) {
            for (std::size_t c = 0; c < 3; ++c) {
                ASSERT_EQ(a.getParts()[p][i]->cornerPosition(c), b.getParts()[p][i]->cornerPosition(c));
                ASSERT_EQ(a.getParts()[p][i]->tex[c], b.getParts()[p][i]->tex[c]);
            }
        }
    }
}

} // namespace

TEST(CsgFile, LineBreaksAndNumberFormsDoNotMatter) {
    const csgMeshData data = dataOf("1 3\t+0.5 -.5 1.e1 1E-2 0 \r\n 1 0 0 0 0 0 1 0 0 0 1 0 1 2 rock  trailing words");
    ASSERT_EQ(data.parts.size(), 1u);
    EXPECT_EQ(data.parts[0].corners[0].position, (csgVector{0.5, -0.5, 10.0}));
    EXPECT_EQ(data.parts[0].corners[0].tex.u, 0.01);
    EXPECT_EQ(data.parts[0].texture, "rock");
}

TEST(CsgFile, CountsOfZeroOrLessMeanNoRecords) {
    EXPECT_TRUE(dataOf("0").parts.empty());
    EXPECT_TRUE(dataOf("-3").parts.empty());
    const csgMeshData data = dataOf("1 0 -1 rock");
    EXPECT_TRUE(data.parts[0].corners.empty());
    EXPECT_TRUE(data.parts[0].triangles.empty());
}

TEST(CsgFile, FaultsNameTheirPlace) {
    EXPECT_EQ(faultOf(""), "line 1, part count is missing");
    EXPECT_EQ(faultOf("x"), "line 1, part count is no number");
    EXPECT_EQ(faultOf("2000000000"), "line 1, part 0: vertex count is missing");
    EXPECT_EQ(faultOf("1\n2000000000\n0 0 0 0 0"), "line 3, part 0: vertex 1: x is missing");
    EXPECT_EQ(faultOf("1\n1\n0 0 nan 0 0"), "line 3, part 0: vertex 0: z is no number");
    EXPECT_EQ(faultOf("1\n1\n0 0 0 1e999 0"), "line 3, part 0: vertex 0: u is no number");
    EXPECT_EQ(faultOf("1\n1\n0 1e31 0 0 0"), "line 3, part 0: vertex 0: y is too large");
    EXPECT_EQ(faultOf("1 1 0 0 0 0 0 1 0 0 1 rock"), "line 1, part 0: face 0: index 1 of 1 vertices");
    EXPECT_EQ(faultOf("1 1 0 0 0 0 0 1 0 -1 0 rock"), "line 1, part 0: face 0: index -1 of 1 vertices");
    EXPECT_EQ(faultOf("\xFF\xFE 1"), "line 1, the file is UTF-16, save it as UTF-8");
    EXPECT_EQ(faultOf("99999999999 0"), "line 1, part count is no number");
}

TEST(CsgFile, EveryTruncationIsRefused) {
    const std::string whole = tetrahedron;
    for (std::size_t length = 0; length < whole.size() - 7; ++length) {
        csgMeshData data;
        TextFault fault;
        EXPECT_EQ(readCsgText(whole.substr(0, length), data, fault), csgReadResult::malformed) << length;
        EXPECT_FALSE(fault.text.empty());
    }
}

TEST(CsgFile, MergesEqualPositionsAndDropsUnfitFaces) {
    csgMesh mesh;
    mesh.build(dataOf("2\n"
                      "4  0 0 0 0 0  1 0 0 0 0  0 1 0 0 0  0.5 0 0 0 0\n"
                      "3  0 1 2  0 0 1  0 3 1  rock\n"
                      "4  0.000005 0.000005 0.000005 1 1  1 0 0 0 0  0 1 0.00002 0 0  0 0 1 0 0\n"
                      "2  0 1 3  0 3 2  sand\n"));
    // The doubled and the straight face are gone; the first corner is shared, the third is not.
    EXPECT_EQ(mesh.getParts()[0].size(), 1u);
    EXPECT_EQ(mesh.getParts()[1].size(), 2u);
    EXPECT_EQ(mesh.getParts()[1][0]->corners[0], mesh.getParts()[0][0]->corners[0]);
    EXPECT_EQ(mesh.getParts()[0][0]->corners[0]->faces.size(), 3u);
    EXPECT_NE(mesh.getParts()[1][1]->corners[2], mesh.getParts()[0][0]->corners[2]);
    EXPECT_EQ(mesh.getParts()[1][0]->tex[0], (csgTexCoord{1.0, 1.0}));
    EXPECT_EQ(mesh.getVertices()[0]->position, (csgVector{0.0, 1.0, 0.0})) << "a face's last corner enters first";
}

TEST(CsgFile, RoundTripKeepsEveryBit) {
    csgMesh land;
    csgMeshData data = islandData(16, 60.0, 3);
    data.parts.push_back(boxData({40.0, -5.0, 40.0}, {50.0, 20.0, 50.0}).parts[0]);
    data.parts[1].texture = "missing-name";
    land.build(data);
    for (const double x : {-9.0, 1.0, 2.5, 11.0}) {
        csgMesh tool;
        tool.build(sphereData(2, 7.0));
        tool.translate(x, 14.0, x / 3.0);
        land.carve(tool);
    }
    const std::string text = writeCsgText(land, textureNamesOf(data));
    const csgMeshData again = dataOf(text);
    EXPECT_EQ(textureNamesOf(again), (std::vector<std::string>{"stone", "missing-name"}));
    csgMesh copy;
    copy.build(again);
    expectSameFaces(land, copy);
    EXPECT_LT(copy.getVertices().size(), land.getVertices().size()) << "no vertex lost its faces in this test";
    EXPECT_EQ(writeCsgText(copy, textureNamesOf(again)), text);
}

TEST(CsgFile, RoundTripKeepsTheSignOfZero) {
    csgMesh mesh;
    mesh.build(dataOf("1 3 -0 0 0 -0 0 1 0 0 0 0 0 1 0 0 0 1 0 1 2 rock"));
    const std::string text = writeCsgText(mesh, {"rock"});
    EXPECT_NE(text.find("-0 0 0 -0 0\n"), std::string::npos) << text;
}
