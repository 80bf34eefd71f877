#include "sampling/pngscaledreader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <cstdlib>

namespace
{
// A disc of colour on a clear ground, antialiased.
QImage disc(QImage::Format format)
{
    QImage image(400, 300, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(200, 40, 90));
    painter.drawEllipse(QPointF(180, 160), 110, 90);
    painter.end();
    return image.convertToFormat(format);
}

// Mean difference of alpha and of the colour where both are opaque enough.
void compare(const QImage& a, const QImage& b, double* alpha, double* colour)
{
    double sumA = 0, sumC = 0;
    int n = 0, nc = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y), q = b.pixelColor(x, y);
            sumA += std::abs(p.alpha() - q.alpha());
            ++n;
            if (p.alpha() > 128 && q.alpha() > 128) {
                sumC += std::abs(p.red() - q.red()) + std::abs(p.green() - q.green()) + std::abs(p.blue() - q.blue());
                nc += 3;
            }
        }
    }
    *alpha = sumA / n;
    *colour = nc ? sumC / nc : 0;
}
} // namespace

TEST(PngShrunk, EveryPixelFormatShrinksLikeTheSmoothScaleOfTheWholePicture)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QSize size(100, 75);
    for (const auto format : {QImage::Format_ARGB32, QImage::Format_RGBA64, QImage::Format_Indexed8,
                              QImage::Format_RGB32, QImage::Format_Grayscale8}) {
        const QImage picture = disc(format);
        const QString path = dir.filePath(QStringLiteral("disc%1.png").arg(int(format)));
        ASSERT_TRUE(picture.save(path));
        bool handled = false;
        QString error;
        const QImage shrunk = readPngShrunk(path, size, &handled, &error);
        ASSERT_TRUE(handled) << int(format);
        ASSERT_EQ(shrunk.size(), size) << error.toStdString();
        EXPECT_EQ(shrunk.format(), QImage::Format_ARGB32);
        const QImage expected = QImage(path).convertToFormat(QImage::Format_ARGB32).scaled(
            size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        double alpha = 0, colour = 0;
        compare(shrunk, expected, &alpha, &colour);
        EXPECT_LT(alpha, 3.0) << "format " << int(format);
        EXPECT_LT(colour, 3.0) << "format " << int(format);
    }
}

TEST(PngShrunk, LeavesOtherFilesAndGrowingToTheCallerAndReportsBrokenOnes)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString png = dir.filePath("disc.png");
    ASSERT_TRUE(disc(QImage::Format_ARGB32).save(png));
    const QString jpeg = dir.filePath("disc.jpg");
    ASSERT_TRUE(disc(QImage::Format_RGB32).save(jpeg));

    bool handled = true;
    QString error;
    EXPECT_TRUE(readPngShrunk(jpeg, QSize(100, 75), &handled, &error).isNull());
    EXPECT_FALSE(handled) << "not a PNG";
    handled = true;
    EXPECT_TRUE(readPngShrunk(png, QSize(800, 600), &handled, &error).isNull());
    EXPECT_FALSE(handled) << "larger than the file";

    // Cut off in the middle of the picture's data: refused with a reason.
    QFile file(png);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    file.close();
    const QString cut = dir.filePath("cut.png");
    QFile out(cut);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes.left(bytes.size() / 2));
    out.close();
    handled = false;
    error.clear();
    EXPECT_TRUE(readPngShrunk(cut, QSize(100, 75), &handled, &error).isNull());
    EXPECT_TRUE(handled);
    EXPECT_FALSE(error.isEmpty());
}
