#include "csg/solid/csg_file.h"
#include "csg/solid/csg_mesh.h"
#include "support/solids.h"

#include <gtest/gtest.h>

namespace {

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

/// What a round trip has to keep: every face's numbers in the order of parts and faces. Vertices may change theirs.
std::vector<double> numbersOf(const csgMesh& mesh) {
    std::vector<double> numbers;
    for (const csgFaceList& part : mesh.getParts()) {
        numbers.push_back(static_cast<double>(part.size()));
        for (const auto& face : part) {
            for (std::size_t i = 0; i < 3; ++i) {
                const csgVector& p = face->cornerPosition(i);
                numbers.insert(numbers.end(), {p.x, p.y, p.z, face->tex[i].u, face->tex[i].v});
            }
        }
    }
    return numbers;
}

} // namespace

TEST(CsgFile, LineBreaksAndNumberFormsDoNotMatter) {
    const csgMeshData data = dataOf("1 3\t+0.5 -.5 1.e1 1E-2 7 \r\n 1 0 0 0 0 0 1 0 0 0 1 2 0 1 rock  trailing words");
    ASSERT_EQ(data.parts.size(), 1u);
    EXPECT_EQ(data.parts[0].corners[0].position, (csgVector{0.5, -0.5, 10.0}));
    EXPECT_EQ(data.parts[0].corners[0].tex, (csgTexCoord{0.01, 7.0}));
    EXPECT_EQ(data.parts[0].triangles, (std::vector<csgMeshData::Triangle>{{2, 0, 1}}));
    EXPECT_EQ(data.parts[0].texture, "rock");
}

TEST(CsgFile, CountsOfZeroOrLessMeanNoRecords) {
    EXPECT_TRUE(dataOf("0").parts.empty());
    EXPECT_TRUE(dataOf("-3").parts.empty());
    const csgMeshData::Part part = dataOf("1 0 -1 rock").parts.at(0);
    EXPECT_TRUE(part.corners.empty() && part.triangles.empty() && part.texture == "rock");
}

TEST(CsgFile, FaultsNameTheirPlace) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "line 1, part count is missing"},
        {"x", "line 1, part count is no number"},
        {"99999999999 0", "line 1, part count is no number"},
        {"\xFF\xFE 1", "line 1, the file is UTF-16, save it as UTF-8"},
        {"2000000000", "line 1, part 0: vertex count is missing"},
        {"1\n2000000000\n0 0 0 0 0", "line 3, part 0: vertex 1: x is missing"},
        {"1\n1\n0 1e31 0 0 0", "line 3, part 0: vertex 0: y is too large"},
        {"1\n1\n0 0 nan 0 0", "line 3, part 0: vertex 0: z is no number"},
        {"1\n1\n0 0 0 1e999 0", "line 3, part 0: vertex 0: u is no number"},
        {"1\n1\n0 0 0 0 x", "line 3, part 0: vertex 0: v is no number"},
        {"2 0 0 a\n1\n0 0 0 0 0\n2 0 0 0\n0 0 1 rock", "line 5, part 1: face 1: index 1 of 1 vertices"},
        {"1 1 0 0 0 0 0 1 0 -1 0 rock", "line 1, part 0: face 0: index -1 of 1 vertices"},
        {"1 0 0", "line 1, part 0: texture name is missing"},
    };
    for (const auto& [text, fault] : cases)
        EXPECT_EQ(faultOf(text), fault);
}

TEST(CsgFile, EveryTruncationIsRefused) {
    const std::string whole = "1\n4\n0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n0 0 1 1 1\n4\n0 2 1\n0 1 3\n0 3 2\n1 2 3\n";
    for (std::size_t length = 0; length <= whole.size(); ++length)
        EXPECT_TRUE(faultOf(whole.substr(0, length)).ends_with(" is missing")) << length;
    EXPECT_EQ(dataOf(whole + "s").parts[0].triangles.size(), 4u);
}

TEST(CsgFile, AsManyFacesAsAllowedAreRead) {
    std::string text = "1 1 0 0 0 0 0 " + std::to_string(csgMostFaces);
    for (std::size_t i = 0; i < csgMostFaces; ++i)
        text += " 0 0 0";
    EXPECT_EQ(dataOf(text + " rock").parts[0].triangles.size(), csgMostFaces);
}

TEST(CsgFile, NoMoreThanSoManyFacesRoundOnePlace) {
    // A fan whose every face brings its own three corners, as exporters for flat shading write them.
    const auto fan = [](std::size_t faces) {
        std::ostringstream corners;
        std::ostringstream triangles;
        for (std::size_t i = 0; i < faces; ++i) {
            corners << " 0 5 0 0 0  9 " << i << " 0 0 0  9 " << i + 1 << " 0 0 0";
            triangles << ' ' << 3 * i << ' ' << 3 * i + 1 << ' ' << 3 * i + 2;
        }
        std::ostringstream whole;
        whole << "1 " << 3 * faces << corners.str() << ' ' << faces << triangles.str() << " rock";
        return whole.str();
    };
    EXPECT_EQ(dataOf(fan(256)).parts[0].triangles.size(), 256u);
    EXPECT_EQ(faultOf(fan(257)), "line 1, part 0: face 256: more than 256 faces have a corner in common");
}

TEST(CsgFile, MergesEqualPositionsAndDropsUnfitFaces) {
    csgMesh mesh;
    mesh.build(dataOf("2\n"
                      "4  0 0 0 0 0  1 0 0 0 0  0 1 0 0 0  0.5 0 0 0 0\n"
                      "3  0 1 2  0 0 1  0 3 1  rock\n"
                      "4  0.000005 0.000005 0.000005 3 2  1 0 0 0 0  0 1 0.00002 0 0  0 0 1 0 0\n"
                      "2  0 1 3  0 3 2  sand\n"));
    // The doubled and the straight face are gone; the first corner is shared, the third is not.
    EXPECT_EQ(mesh.getParts()[0].size(), 1u);
    EXPECT_EQ(mesh.getParts()[1].size(), 2u);
    EXPECT_EQ(mesh.getParts()[1][0]->corners[0], mesh.getParts()[0][0]->corners[0]);
    EXPECT_EQ(mesh.getParts()[0][0]->corners[0]->faces.size(), 3u);
    EXPECT_NE(mesh.getParts()[1][1]->corners[2], mesh.getParts()[0][0]->corners[2]);
    EXPECT_EQ(mesh.getParts()[1][0]->tex[0], (csgTexCoord{3.0, 2.0}));
    EXPECT_EQ(mesh.getVertices()[0]->position, (csgVector{0.0, 1.0, 0.0})) << "a face's last corner enters first";
}

TEST(CsgFile, RoundTripKeepsEveryBit) {
    csgMesh land;
    csgMeshData data = islandData(16, 60.0, 3);
    data.parts.push_back(boxData({40.0, -5.0, 40.0}, {50.0, 20.0, 50.0}).parts[0]);
    land.build(data);
    for (const double x : {-9.0, 1.0, 2.5, 11.0}) {
        csgMesh tool;
        tool.build(sphereData(2, 7.0));
        tool.translate(x, 14.0, x / 3.0);
        land.carve(tool);
    }
    const std::string text = writeCsgText(land, {"stone", "missing-name"});
    const csgMeshData again = dataOf(text);
    ASSERT_EQ(again.parts.size(), 2u);
    EXPECT_EQ(again.parts[0].texture + again.parts[1].texture, "stonemissing-name");
    csgMesh copy;
    copy.build(again);
    EXPECT_EQ(numbersOf(copy), numbersOf(land));
    EXPECT_LT(copy.getVertices().size(), land.getVertices().size()) << "no vertex lost its faces in this test";
    EXPECT_EQ(writeCsgText(copy, {"stone", "missing-name"}), text);

    copy.build(dataOf("1 3 -0 0 0 -0 0 1 0 0 0 0 0 1 0 0 0 1 0 1 2 rock"));
    EXPECT_NE(writeCsgText(copy, {"rock"}).find("\n-0 0 0 -0 0\n"), std::string::npos) << "the sign of zero is lost";
}
