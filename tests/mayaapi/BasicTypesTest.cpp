#include <maya/MArgList.h>
#include <maya/MFileObject.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include <gtest/gtest.h>

#include <clocale>

namespace {

TEST(MStringTest, SplitDropsEmptyPiecesAndSubstringTakesInclusiveClampedBounds)
{
  MStringArray parts;
  MString("|group1||pCube1|").split('|', parts);
  ASSERT_EQ(parts.length(), 2u);
  EXPECT_EQ(parts[0], "group1");
  EXPECT_EQ(parts[1], "pCube1");
  const MString text("scene.model");
  EXPECT_EQ(text.substring(0, 4), "scene");
  EXPECT_EQ(text.substring(6, 99), "model");
  EXPECT_EQ(text.substring(5, 2), "");
  EXPECT_EQ(text.rindex('.'), 5);
  EXPECT_EQ(text.index('x'), -1);
}

TEST(MStringTest, NumbersUseADecimalPointWhateverTheLocale)
{
  const char* previous = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = previous ? previous : "C";
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  EXPECT_DOUBLE_EQ(MString("2.5").asDouble(), 2.5);
  EXPECT_TRUE(MString("2.5").isDouble());
  EXPECT_EQ(MString().set(0.25), "0.25");
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(MStringTest, IntegerTestRejectsTrailingText)
{
  EXPECT_TRUE(MString("-12").isInt());
  EXPECT_FALSE(MString("12a").isInt());
  EXPECT_FALSE(MString("").isInt());
  EXPECT_EQ(MString("42").asInt(), 42);
}

TEST(MStatusTest, CodesConvertToBoolAndNameThemselves)
{
  EXPECT_TRUE(MStatus());
  EXPECT_FALSE(MStatus(MS::kFailure));
  EXPECT_EQ(MStatus(MS::kInvalidParameter).errorString(), "(kInvalidParameter): Object is incompatible with this method");
  EXPECT_EQ(MStatus(MS::kFailure, "Custom reason").errorString(), "Custom reason");
  EXPECT_TRUE(MStatus(MS::kNotFound) == MS::kNotFound);
}

TEST(MMatrixTest, InverseOfATransformUndoesIt)
{
  MMatrix m;
  m(0, 0) = 0.0;
  m(0, 1) = 2.0;
  m(1, 0) = -2.0;
  m(1, 1) = 0.0;
  m(3, 0) = 5.0;
  m(3, 2) = -1.0;
  EXPECT_DOUBLE_EQ(m.det3x3(), 4.0);
  EXPECT_DOUBLE_EQ(m.det4x4(), 4.0);
  EXPECT_TRUE((m * m.inverse()).isEquivalent(MMatrix::identity, 1e-12));
  EXPECT_TRUE((m.inverse() * m).isEquivalent(MMatrix::identity, 1e-12));
  MMatrix flat;
  flat(2, 2) = 0.0;
  EXPECT_TRUE(flat.isSingular());
  EXPECT_EQ(flat.inverse(), MMatrix::identity) << "a singular matrix inverts to the identity";
}

TEST(MMatrixTest, ProductAppliesTheLeftMatrixFirst)
{
  MMatrix scale;
  scale(0, 0) = 2.0;
  MMatrix move;
  move(3, 0) = 1.0;
  const MPoint p = MPoint(1, 0, 0) * (scale * move);
  EXPECT_DOUBLE_EQ(p.x, 3.0);
  EXPECT_DOUBLE_EQ((MPoint(1, 0, 0) * (move * scale)).x, 4.0);
}

TEST(MArgListTest, ArgumentsConvertOnRequestAndReportBadOnes)
{
  MArgList args;
  args.addArg(MString("-edit"));
  args.addArg(3);
  args.addArg(MString("x"));
  EXPECT_EQ(args.length(), 3u);
  EXPECT_EQ(args.asString(0), "-edit");
  MStatus status;
  EXPECT_EQ(args.asInt(1, &status), 3);
  EXPECT_TRUE(status);
  args.asInt(2, &status);
  EXPECT_FALSE(status);
  args.asString(3, &status);
  EXPECT_FALSE(status);
}

TEST(MFileObjectTest, FullNameSplitsIntoPathAndName)
{
  MFileObject file;
  file.setRawFullName("C:/assets/rock.qmesh");
  EXPECT_EQ(file.name(), "rock.qmesh");
  EXPECT_EQ(file.path(), "C:/assets/");
  EXPECT_EQ(file.fullName(), "C:/assets/rock.qmesh");
  file.setRawFullName("bare.model");
  EXPECT_EQ(file.name(), "bare.model");
  EXPECT_EQ(file.path(), "");
  EXPECT_FALSE(file.exists());
}

TEST(MTimeTest, ArithmeticKeepsTheLeftUnit)
{
  const MTime sum = MTime(1.0, MTime::kSeconds) + MTime(12.0, MTime::kFilm);
  EXPECT_EQ(sum.unit(), MTime::kSeconds);
  EXPECT_DOUBLE_EQ(sum.value(), 1.5);
  EXPECT_TRUE(MTime(24.0, MTime::kFilm) == MTime(1.0, MTime::kSeconds));
  EXPECT_TRUE(MTime(1.0, MTime::kFilm) < MTime(1.0, MTime::kGames));
}

}
