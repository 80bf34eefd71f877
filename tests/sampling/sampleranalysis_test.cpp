// Samplers reading their image files: output sizes, the sampler's frame,
// the cache, colour edges, and files that cannot be read or are huge.

#include "samplingtestimages.h"

#include "model/metasampler.h"
#include "sampling/sampleranalysis.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <cstring>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>
#include <fstream>
#include <memory>
#include <string>

namespace
{
constexpr double kPi = 3.14159265358979323846;

class SamplerAnalysisTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        clearSamplerAnalysisCache();
    }

    QString save(const QImage& image, const QString& name)
    {
        const QString path = m_dir.filePath(name);
        EXPECT_TRUE(image.save(path));
        return path;
    }

    static std::unique_ptr<MetaSampler> samplerOf(const QString& file, int outputWidth, int outputHeight)
    {
        auto sampler = std::make_unique<MetaSampler>();
        sampler->file = file;
        sampler->outputWidth = outputWidth;
        sampler->outputHeight = outputHeight;
        sampler->height = 2;
        return sampler;
    }

    QString scene() const { return m_dir.filePath("scene.plax"); }

    QTemporaryDir m_dir;
};

// Peak resident memory of this process so far, in kilobytes.
long peakKilobytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stol(line.substr(6));
    return -1;
}
} // namespace

TEST(SamplerOutputSize, FollowsTheSettingsAndTheFile)
{
    EXPECT_EQ(samplerOutputSize(QSize(400, 200), 64, 32), QSize(64, 32));
    EXPECT_EQ(samplerOutputSize(QSize(400, 200), 0, 0), QSize(400, 200));
    EXPECT_EQ(samplerOutputSize(QSize(400, 200), 100, 0), QSize(100, 50));
    EXPECT_EQ(samplerOutputSize(QSize(400, 200), 0, 100), QSize(200, 100));
    EXPECT_EQ(samplerOutputSize(QSize(16000, 8000), 0, 0), QSize(kMaxSamplerOutputSide, kMaxSamplerOutputSide / 2));
    EXPECT_EQ(samplerOutputSize(QSize(10, 10), 99999, 5), QSize(kMaxSamplerOutputSide, 5));
    EXPECT_FALSE(samplerOutputSize(QSize(), 10, 10).isValid());
}

TEST_F(SamplerAnalysisTest, OutlinesInTheSamplersFrame)
{
    // A disc of radius 64 in a 256 x 128 picture, right of centre, sampled at 128 x 64, two units high.
    QImage picture(256, 128, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawEllipse(QPointF(192, 64), 48, 48);
    }
    const auto owned = samplerOf(save(picture, "disc.png"), 128, 64);
    const MetaSampler& sampler = *owned;
    const auto analysis = analyseSampler(sampler, scene());
    ASSERT_TRUE(analysis->error.isEmpty()) << analysis->error.toStdString();
    EXPECT_EQ(analysis->pixels->width(), 128);
    const std::vector<SamplerOutline> outlines = analysis->toFrame(analysis->tracedRings, sampler.height);
    ASSERT_EQ(outlines.size(), 1u);
    // The picture is 4 units wide and 2 high: the disc is centred at (1, 0) with radius 0.75.
    double cx = 0, cy = 0;
    for (const Vec2& p : outlines[0].points) {
        cx += p.x;
        cy += p.y;
    }
    cx /= double(outlines[0].points.size());
    cy /= double(outlines[0].points.size());
    EXPECT_NEAR(cx, 1.0, 0.02);
    EXPECT_NEAR(cy, 0.0, 0.02);
    EXPECT_NEAR(polygonArea(outlines[0].points), kPi * 0.75 * 0.75, 0.02 * kPi * 0.75 * 0.75)
        << "counter-clockwise with y up";
}

TEST_F(SamplerAnalysisTest, ResultsAreKeptUntilTheFileChanges)
{
    const QString file = save(TestImages::disc(64, 32, 32, 20), "cached.png");
    const auto owned = samplerOf("cached.png", 32, 32);
    const MetaSampler& sampler = *owned;
    const auto first = analyseSampler(sampler, scene());
    EXPECT_EQ(analyseSampler(sampler, scene()), first) << "the same request is served from the cache";
    const auto other = samplerOf("cached.png", 32, 32);
    other->alphaEdgeThreshold = 0.25f;
    EXPECT_NE(analyseSampler(*other, scene()), first) << "other settings are another request";

    QFile::remove(file);
    save(TestImages::twoDiscs(64, 10), "cached.png");
    QFile touched(file);
    ASSERT_TRUE(touched.open(QIODevice::ReadWrite));
    touched.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime);
    touched.close();
    const auto changed = analyseSampler(sampler, scene());
    EXPECT_NE(changed, first);
    EXPECT_EQ(changed->tracedRings.size(), 2u) << "a changed file is read again";
}

TEST_F(SamplerAnalysisTest, UnreadableFilesGiveNoOutlineAndOneLine)
{
    const QByteArray png = [&] {
        save(TestImages::disc(64, 32, 32, 20), "whole.png");
        QFile f(m_dir.filePath("whole.png"));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll();
    }();
    QFile truncated(m_dir.filePath("truncated.png"));
    ASSERT_TRUE(truncated.open(QIODevice::WriteOnly));
    truncated.write(png.left(png.size() / 2));
    truncated.close();
    QFile text(m_dir.filePath("notes.png"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("these are not pixels");
    text.close();

    for (const char* name : {"missing.png", "truncated.png", "notes.png", ""}) {
        LogCapture capture;
        const auto analysis = analyseSampler(*samplerOf(name, 32, 32), scene());
        EXPECT_EQ(analysis->pixels, nullptr) << name;
        EXPECT_TRUE(analysis->tracedRings.empty()) << name;
        EXPECT_TRUE(analysis->alphaRings.empty()) << name;
        EXPECT_FALSE(analysis->error.isEmpty()) << name;
        EXPECT_EQ(capture.texts(LOG_WARNING).size() + capture.texts(LOG_ERROR).size(), 1) << name << capture.dump().toStdString();
    }
}

TEST_F(SamplerAnalysisTest, TransparentAndOpaquePictures)
{
    QImage clear(40, 30, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const auto none = analyseSampler(*samplerOf(save(clear, "clear.png"), 0, 0), scene());
    EXPECT_TRUE(none->error.isEmpty());
    EXPECT_TRUE(none->tracedRings.empty());

    QImage solid(40, 30, QImage::Format_RGB32);
    solid.fill(Qt::darkGreen);
    const auto owned = samplerOf(save(solid, "solid.png"), 0, 0);
    const MetaSampler& sampler = *owned;
    const auto full = analyseSampler(sampler, scene());
    ASSERT_EQ(full->tracedRings.size(), 1u);
    const std::vector<SamplerOutline> outline = full->toFrame(full->tracedRings, sampler.height);
    // The whole picture: 2 units high and 40/30 as wide.
    EXPECT_NEAR(polygonArea(outline[0].points), 2.0 * 2.0 * 40 / 30, 1e-4);
}

TEST_F(SamplerAnalysisTest, ColourEdgesEncloseTheShape)
{
    // An opaque picture: white with a red disc. Alpha gives the rectangle, colour the disc.
    QImage picture(256, 256, QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::red);
        painter.drawEllipse(QPointF(128, 128), 80, 80);
    }
    const auto sampler = samplerOf(save(picture, "red.png"), 0, 0);
    sampler->useColor = true;
    const auto analysis = analyseSampler(*sampler, scene());
    ASSERT_EQ(analysis->alphaRings.size(), 1u);
    EXPECT_DOUBLE_EQ(analysis->alphaRings[0].area, 256.0 * 256.0);
    ASSERT_EQ(analysis->tracedRings.size(), 1u);
    EXPECT_NEAR(analysis->tracedRings[0].area, kPi * 80 * 80, 0.04 * kPi * 80 * 80);
    EXPECT_EQ(analysis->pixels->sobelImage().size(), QSize(256, 256));
    const QImage maxima = analysis->pixels->localMaximaImage();
    EXPECT_GT(qGray(maxima.pixel(48, 128)), 128) << "the disc's left edge is a local maximum";
    EXPECT_EQ(qGray(maxima.pixel(128, 128)), 0) << "the flat middle is not";
}

TEST_F(SamplerAnalysisTest, DebugMaps)
{
    const auto analysis = analyseImage(TestImages::disc(64, 32, 32, 20), QSize(64, 64), 0.5f, false);
    const QImage alpha = analysis->pixels->alphaImage();
    EXPECT_EQ(qGray(alpha.pixel(32, 32)), 255);
    EXPECT_EQ(qGray(alpha.pixel(1, 1)), 0);
    const QImage edge = analysis->pixels->alphaEdgeImage(0.5f);
    EXPECT_EQ(qGray(edge.pixel(32, 32)), 0) << "inside is not edge";
    EXPECT_EQ(qGray(edge.pixel(32, 12)), 255) << "the top of the disc is";
}

TEST_F(SamplerAnalysisTest, HugePicturesAreReadAtTheOutputSize)
{
    // 16,000 x 16,000 pixels: 1 GB as 32-bit pixels, never held whole.
    const int side = 16000;
    ASSERT_TRUE(writeHugePng(m_dir.filePath("huge.png"), side));
    const long before = peakKilobytes();
    const auto analysis = analyseSampler(*samplerOf("huge.png", 256, 256), scene());
    const long after = peakKilobytes();
    ASSERT_TRUE(analysis->error.isEmpty()) << analysis->error.toStdString();
    EXPECT_EQ(analysis->fileSize, QSize(side, side));
    ASSERT_EQ(analysis->tracedRings.size(), 1u);
    EXPECT_NEAR(analysis->tracedRings[0].area, 128.0 * 128.0, 0.02 * 128 * 128) << "the middle square";
    if (before > 0) {
        EXPECT_LT(after - before, 200 * 1024) << "peak memory grew by " << (after - before) / 1024 << " MB";
    }
}

TEST_F(SamplerAnalysisTest, HugeOneBitPicturesAreReadScaledToo)
{
    // One bit per pixel with a transparent colour: Qt would decode this whole
    // at 32 bits a pixel (1 GB) before scaling; read row by row it is small.
    const int side = 16000;
    {
        QImage huge(side, side, QImage::Format_Mono);
        huge.setColorTable({qRgba(0, 0, 0, 0), qRgba(255, 255, 255, 255)});
        huge.fill(0);
        for (int y = side / 4; y < side * 3 / 4; ++y)
            std::memset(huge.scanLine(y) + side / 32, 0xFF, size_t(side / 16));
        ASSERT_TRUE(huge.save(m_dir.filePath("mono.png")));
    }
    const auto analysis = analyseSampler(*samplerOf("mono.png", 256, 256), scene());
    ASSERT_TRUE(analysis->error.isEmpty()) << analysis->error.toStdString();
    ASSERT_EQ(analysis->tracedRings.size(), 1u);
    EXPECT_NEAR(analysis->tracedRings[0].area, 128.0 * 128.0, 0.02 * 128 * 128) << "the middle square";
}
