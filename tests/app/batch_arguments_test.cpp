#include "app/batchtool.h"

#include <gtest/gtest.h>

namespace
{
BatchRequest parse(const QStringList& args)
{
    return parseBatchArguments(QStringList{"plax"} + args);
}
} // namespace

TEST(BatchArguments, LastInputWinsAndScriptsAccumulate)
{
    BatchRequest r = parse({"-i", "a.plax", "-s", "x.rs", "-i", "b.plax", "-s", "y.rs", "-e", "1.json", "-e", "2.json"});
    EXPECT_EQ(r.inputFile, "b.plax");
    EXPECT_EQ(r.scriptFiles, (QStringList{"x.rs", "y.rs"}));
    EXPECT_EQ(r.exportFile, "2.json");
}

TEST(BatchArguments, ValuesAreAlsoExaminedAsOptions)
{
    BatchRequest r = parse({"-i", "-v"});
    EXPECT_EQ(r.inputFile, "-v");
    EXPECT_TRUE(r.verbose);

    // "-s -i x" appends "-i" as a script and then "-i" takes "x".
    r = parse({"-s", "-i", "x"});
    EXPECT_EQ(r.scriptFiles, QStringList{"-i"});
    EXPECT_EQ(r.inputFile, "x");
}

TEST(BatchArguments, OptionAtTheEndTakesNoValue)
{
    BatchRequest r = parse({"-r", "out.plax", "-i"});
    EXPECT_TRUE(r.inputFile.isEmpty());
    EXPECT_EQ(r.resaveFile, "out.plax");
}

TEST(BatchArguments, LongAndShortFlagsAndUnknownArguments)
{
    BatchRequest r = parse({"--verbose", "--quiet", "--help", "--version", "--bogus", "scene.plax"});
    EXPECT_TRUE(r.verbose && r.quiet && r.help && r.version);
    EXPECT_TRUE(r.inputFile.isEmpty()) << "a lone file name is not an input";
    r = parse({"-h", "-c", "out.cpp"});
    EXPECT_TRUE(r.help);
    EXPECT_EQ(r.sourceFile, "out.cpp");
    EXPECT_FALSE(r.verbose || r.quiet || r.version);
}
