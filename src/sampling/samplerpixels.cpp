#include "sampling/samplerpixels.h"

#include <algorithm>
#include <cmath>

QSize samplerOutputSize(QSize fileSize, int outputWidth, int outputHeight)
{
    if (fileSize.width() <= 0 || fileSize.height() <= 0)
        return QSize();
    const double aspect = double(fileSize.width()) / double(fileSize.height());
    int w = outputWidth > 0 ? outputWidth : 0;
    int h = outputHeight > 0 ? outputHeight : 0;
    if (w == 0 && h == 0) {
        w = fileSize.width();
        h = fileSize.height();
        const int longest = std::max(w, h);
        if (longest > kMaxSamplerOutputSide) {
            w = int(std::lround(double(w) * kMaxSamplerOutputSide / longest));
            h = int(std::lround(double(h) * kMaxSamplerOutputSide / longest));
        }
    } else if (w == 0) {
        w = int(std::lround(h * aspect));
    } else if (h == 0) {
        h = int(std::lround(w / aspect));
    }
    return QSize(std::clamp(w, 1, kMaxSamplerOutputSide), std::clamp(h, 1, kMaxSamplerOutputSide));
}

namespace
{
ScalarField alphaOf(const QImage& image)
{
    ScalarField field;
    field.width = image.width();
    field.height = image.height();
    field.values.resize(size_t(field.width) * size_t(field.height));
    for (int y = 0; y < field.height; ++y) {
        const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        float* out = field.values.data() + size_t(y) * size_t(field.width);
        for (int x = 0; x < field.width; ++x)
            out[x] = float(qAlpha(row[x])) * (1.0f / 255.0f);
    }
    return field;
}

QImage greyImage(int width, int height, const std::vector<float>& values, float scale)
{
    QImage image(width, height, QImage::Format_Grayscale8);
    for (int y = 0; y < height; ++y) {
        uchar* row = image.scanLine(y);
        for (int x = 0; x < width; ++x) {
            const float v = values[size_t(y) * size_t(width) + size_t(x)] * scale;
            row[x] = uchar(std::clamp(int(std::lround(v * 255.0f)), 0, 255));
        }
    }
    return image;
}
} // namespace

SamplerPixels::SamplerPixels(const QImage& image, QSize output)
    : SamplerPixels(image.size() == output ? image : image.scaled(output, Qt::IgnoreAspectRatio, Qt::SmoothTransformation))
{
}

SamplerPixels::SamplerPixels(QImage sampled)
    : m_image(sampled.format() == QImage::Format_ARGB32 ? std::move(sampled) : sampled.convertToFormat(QImage::Format_ARGB32)),
      m_alpha(alphaOf(m_image))
{
}

std::vector<std::uint8_t> SamplerPixels::alphaEdge(float threshold) const
{
    const int w = width(), h = height();
    std::vector<std::uint8_t> edge(size_t(w) * size_t(h), 0);
    // As the tracer does it: solid needs some alpha, whatever the threshold.
    const float t = std::max(threshold, 1.0f / 1024.0f);
    auto solid = [&](int x, int y) { return x >= 0 && y >= 0 && x < w && y < h && m_alpha.at(x, y) >= t; };
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            if (solid(x, y) && (!solid(x - 1, y) || !solid(x + 1, y) || !solid(x, y - 1) || !solid(x, y + 1)))
                edge[size_t(y) * size_t(w) + size_t(x)] = 1;
    return edge;
}

void SamplerPixels::computeColorEdges() const
{
    const int w = width(), h = height();
    const size_t n = size_t(w) * size_t(h);
    // Colour channels composited on black, so transparent parts read as dark.
    std::vector<float> channels[3];
    for (auto& c : channels)
        c.resize(n);
    for (int y = 0; y < h; ++y) {
        const QRgb* row = reinterpret_cast<const QRgb*>(m_image.constScanLine(y));
        for (int x = 0; x < w; ++x) {
            const float a = float(qAlpha(row[x])) / (255.0f * 255.0f);
            const size_t i = size_t(y) * size_t(w) + size_t(x);
            channels[0][i] = float(qRed(row[x])) * a;
            channels[1][i] = float(qGreen(row[x])) * a;
            channels[2][i] = float(qBlue(row[x])) * a;
        }
    }
    m_sobel = {w, h, std::vector<float>(n, 0.0f)};
    std::vector<float> gxBest(n, 0.0f), gyBest(n, 0.0f);
    auto at = [&](const std::vector<float>& c, int x, int y) {
        return c[size_t(std::clamp(y, 0, h - 1)) * size_t(w) + size_t(std::clamp(x, 0, w - 1))];
    };
    const float norm = 1.0f / (4.0f * std::sqrt(2.0f));
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const size_t i = size_t(y) * size_t(w) + size_t(x);
            float best = 0;
            for (const auto& c : channels) {
                const float gx = (at(c, x + 1, y - 1) + 2 * at(c, x + 1, y) + at(c, x + 1, y + 1)) -
                                 (at(c, x - 1, y - 1) + 2 * at(c, x - 1, y) + at(c, x - 1, y + 1));
                const float gy = (at(c, x - 1, y + 1) + 2 * at(c, x, y + 1) + at(c, x + 1, y + 1)) -
                                 (at(c, x - 1, y - 1) + 2 * at(c, x, y - 1) + at(c, x + 1, y - 1));
                const float m = std::sqrt(gx * gx + gy * gy);
                if (m > best) {
                    best = m;
                    gxBest[i] = gx;
                    gyBest[i] = gy;
                }
            }
            m_sobel.values[i] = best * norm;
            m_strongest = std::max(m_strongest, m_sobel.values[i]);
        }
    }
    // Keep a pixel where it is at least as strong as both neighbours along
    // its gradient, the direction rounded to one of the four pixel axes.
    m_localMaxima = {w, h, std::vector<float>(n, 0.0f)};
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const size_t i = size_t(y) * size_t(w) + size_t(x);
            const float m = m_sobel.values[i];
            if (m <= 0)
                continue;
            const float angle = std::atan2(gyBest[i], gxBest[i]);
            const int sector = int(std::lround(angle / (3.14159265f / 4.0f))) & 3;
            static const int kSteps[4][2] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}};
            const int dx = kSteps[sector][0], dy = kSteps[sector][1];
            if (m >= at(m_sobel.values, x + dx, y + dy) && m >= at(m_sobel.values, x - dx, y - dy))
                m_localMaxima.values[i] = m;
        }
    }
}

const ScalarField& SamplerPixels::sobel() const
{
    std::call_once(m_colorEdgesOnce, [this] { computeColorEdges(); });
    return m_sobel;
}

const ScalarField& SamplerPixels::localMaxima() const
{
    std::call_once(m_colorEdgesOnce, [this] { computeColorEdges(); });
    return m_localMaxima;
}

ScalarField SamplerPixels::colorEdgeFill(float threshold) const
{
    const ScalarField& maxima = localMaxima();
    const int w = width(), h = height();
    const size_t n = size_t(w) * size_t(h);
    const float cut = std::max(threshold, 0.0f) * m_strongest;
    std::vector<std::uint8_t> state(n, 0); // 0 open, 1 edge, 2 reached from the border
    for (size_t i = 0; i < n; ++i)
        if (m_strongest > 0 && maxima.values[i] > 0 && maxima.values[i] >= cut)
            state[i] = 1;
    std::vector<size_t> stack;
    auto seed = [&](int x, int y) {
        const size_t i = size_t(y) * size_t(w) + size_t(x);
        if (state[i] == 0) {
            state[i] = 2;
            stack.push_back(i);
        }
    };
    for (int x = 0; x < w; ++x) {
        seed(x, 0);
        seed(x, h - 1);
    }
    for (int y = 0; y < h; ++y) {
        seed(0, y);
        seed(w - 1, y);
    }
    while (!stack.empty()) {
        const size_t i = stack.back();
        stack.pop_back();
        const int x = int(i % size_t(w)), y = int(i / size_t(w));
        if (x > 0)
            seed(x - 1, y);
        if (x + 1 < w)
            seed(x + 1, y);
        if (y > 0)
            seed(x, y - 1);
        if (y + 1 < h)
            seed(x, y + 1);
    }
    ScalarField fill{w, h, std::vector<float>(n, 0.0f)};
    for (size_t i = 0; i < n; ++i)
        fill.values[i] = state[i] == 2 ? 0.0f : 1.0f;
    return fill;
}

QImage SamplerPixels::alphaImage() const
{
    return greyImage(width(), height(), m_alpha.values, 1.0f);
}

QImage SamplerPixels::alphaEdgeImage(float threshold) const
{
    const std::vector<std::uint8_t> edge = alphaEdge(threshold);
    std::vector<float> values(edge.begin(), edge.end());
    return greyImage(width(), height(), values, 1.0f);
}

QImage SamplerPixels::sobelImage() const
{
    const ScalarField& s = sobel();
    return greyImage(width(), height(), s.values, m_strongest > 0 ? 1.0f / m_strongest : 1.0f);
}

QImage SamplerPixels::localMaximaImage() const
{
    const ScalarField& s = localMaxima();
    return greyImage(width(), height(), s.values, m_strongest > 0 ? 1.0f / m_strongest : 1.0f);
}
