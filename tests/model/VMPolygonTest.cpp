#include "model/VMPolygon.h"

#include "model/VMMaterial.h"
#include "model/VMVisArea.h"

#include <gtest/gtest.h>

namespace {

class VMPolygonTest : public testing::Test {
protected:
    VMPolygonTest()
    {
        source.AttributeBits = 0x100000000ull;
        source.AttributeWord = 2;
        source.SourceNode = 3;
        source.Index = 4;
        source.PrimitiveNumber = 5;
        source.CollisionFlags = 0x0F;
        source.CastShadows = 0;
        source.Visible = 0;
        source.LayerAttribute = 7;
        source.Name = "wall";
        source.NameAttribute = 8;
        source.Factors[0] = 0.5f;
        source.Opacity = 9;
        source.SetMaterial(&stone);
        source.PolygonAttributes[2] = 10;
        source.Subdivisions[1] = 4;
        source.SurfaceValues[4] = 1.5f;
        source.Group = 11;
        source.FurtherValues[0] = 2.5f;
        source.Plane[3] = 12.0;
        source.PlaneFlags = VMPolygon::PlaneValidFlag;
        source.Owners.Add(&area);
    }

    ~VMPolygonTest() override { source.Owners.Clear(); }

    VMMaterial stone;
    VMVisArea area;
    VMPolygon source;
};

TEST_F(VMPolygonTest, TheAttributeCopyTakesTheListedFieldsAndAUseOfTheMaterial)
{
    VMPolygon copy;
    copy.CopyAttributesFrom(source);

    EXPECT_EQ(copy.AttributeBits, 0x100000000ull);
    EXPECT_EQ(copy.AttributeWord, 2u);
    EXPECT_EQ(copy.SourceNode, 3u);
    EXPECT_EQ(copy.CollisionFlags, 0x0F);
    EXPECT_EQ(copy.CastShadows, 0);
    EXPECT_EQ(copy.Visible, 0);
    EXPECT_EQ(copy.LayerAttribute, 7);
    EXPECT_EQ(copy.Name, "wall");
    EXPECT_EQ(copy.NameAttribute, 8u);
    EXPECT_EQ(copy.Opacity, 9u);
    EXPECT_EQ(copy.Material(), &stone);
    EXPECT_EQ(stone.UseCount, 2u);
    // Numbering, owners, the factors and the polygon's own fields stay the copy's own.
    EXPECT_EQ(copy.Index, 0u);
    EXPECT_EQ(copy.PrimitiveNumber, -1);
    EXPECT_TRUE(copy.Owners.IsEmpty());
    EXPECT_EQ(copy.Factors[0], 1.0f);
    EXPECT_EQ(copy.Group, NoGroup);
    EXPECT_FALSE(copy.HasValidPlane());
}

TEST_F(VMPolygonTest, ASplitPieceAlsoTakesThePolygonFieldsAndThePlane)
{
    VMPolygon piece;
    piece.CopySplitAttributesFrom(source);

    EXPECT_EQ(piece.Material(), &stone);
    EXPECT_EQ(piece.PolygonAttributes[2], 10u);
    EXPECT_EQ(piece.Subdivisions[1], 4u);
    EXPECT_EQ(piece.SurfaceValues[4], 1.5f);
    EXPECT_EQ(piece.Group, 11u);
    EXPECT_EQ(piece.Plane[3], 12.0);
    EXPECT_TRUE(piece.HasValidPlane());
    EXPECT_EQ(piece.FurtherValues[0], 0.0f);
    piece.PlaneFlags |= 4u;
    piece.InvalidatePlane();
    EXPECT_FALSE(piece.HasValidPlane());
    EXPECT_EQ(piece.PlaneFlags, 4u) << "invalidating the plane clears only its flag";
}

} // namespace
