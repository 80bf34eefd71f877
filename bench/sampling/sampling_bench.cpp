// Sampling and tracing a 2048 x 2048 sprite at output 512 (goal: under
// 50 ms): from its PNG file (decoding at the output size included) and from
// the decoded picture in memory, each split into its stages.
#include "bench.h"

#include "model/metasampler.h"
#include "sampling/imagesource.h"
#include "sampling/outlinetracer.h"
#include "sampling/pathsimplify.h"
#include "sampling/sampleranalysis.h"

#include <QPainter>
#include <QPainterPath>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
// A sprite: a body with a hole, limbs and a few separate specks, antialiased.
QImage sprite(int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(180, 120, 60));
    const double s = size / 2048.0;
    QPainterPath body;
    body.addEllipse(QPointF(1024 * s, 900 * s), 600 * s, 450 * s);
    body.addEllipse(QPointF(1024 * s, 850 * s), 150 * s, 120 * s);
    body.setFillRule(Qt::OddEvenFill);
    painter.drawPath(body);
    painter.drawRoundedRect(QRectF(500 * s, 1250 * s, 180 * s, 650 * s), 60 * s, 60 * s);
    painter.drawRoundedRect(QRectF(1370 * s, 1250 * s, 180 * s, 650 * s), 60 * s, 60 * s);
    for (int i = 0; i < 8; ++i)
        painter.drawEllipse(QPointF((200 + 230 * i) * s, 150 * s), 40 * s, 40 * s);
    return image;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

const bool s_sampling = registerBench("sampling/sprite-2048-at-512", [] {
    QTemporaryDir dir;
    const QImage picture = sprite(2048);
    const QString file = dir.filePath("sprite.png");
    picture.save(file);
    MetaSampler sampler;
    sampler.file = file;
    sampler.outputWidth = 512;
    sampler.outputHeight = 512;

    const int runs = 9;
    std::vector<double> whole, decode, fromMemory, traceOnly, simplify;
    size_t rings = 0, points = 0;
    for (int i = 0; i < runs; ++i) {
        clearSamplerAnalysisCache();
        whole.push_back(timeSeconds([&] { rings = analyseSampler(sampler, QString())->tracedRings.size(); }));
        decode.push_back(timeSeconds([&] { readImageScaled(file, QSize(512, 512)); }));
        std::shared_ptr<const SamplerAnalysis> analysis;
        fromMemory.push_back(timeSeconds([&] { analysis = analyseImage(picture, QSize(512, 512), 0.5f, false); }));
        traceOnly.push_back(timeSeconds([&] { traceOutlines(analysis->pixels->alpha(), 0.5f); }));
        simplify.push_back(timeSeconds([&] {
            points = 0;
            for (const TracedRing& ring : analysis->tracedRings)
                points += simplifyPath(ring.points, true, 0, 2).size();
        }));
    }
    std::printf("  %zu outlines, %zu points after simplification at 2 degrees\n", rings, points);
    std::printf("  from the PNG file (read at 512, sample, trace): %.1f ms (median of %d)\n", median(whole) * 1000, runs);
    std::printf("    of which decoding the file at 512:           %.1f ms\n", median(decode) * 1000);
    std::printf("  from the decoded picture (scale, trace):       %.1f ms\n", median(fromMemory) * 1000);
    std::printf("    of which tracing the 512 x 512 alpha map:    %.1f ms\n", median(traceOnly) * 1000);
    std::printf("  simplifying the outlines:                      %.1f ms\n", median(simplify) * 1000);
    clearSamplerAnalysisCache();
});
} // namespace
