#include "samplingtestimages.h"

#include <QPainter>
#include <QPainterPath>

#include <png.h>

#include <cstdio>
#include <vector>

namespace TestImages
{
QImage blank(int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    return image;
}

QImage disc(int size, double cx, double cy, double radius)
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(30, 120, 220));
    painter.drawEllipse(QPointF(cx, cy), radius, radius);
    return image;
}

QImage ring(int size, double cx, double cy, double outer, double inner)
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(220, 60, 30));
    QPainterPath path;
    path.addEllipse(QPointF(cx, cy), outer, outer);
    path.addEllipse(QPointF(cx, cy), inner, inner);
    path.setFillRule(Qt::OddEvenFill);
    painter.drawPath(path);
    return image;
}

QImage twoDiscs(int size, double radius)
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(40, 200, 40));
    painter.drawEllipse(QPointF(size * 0.25, size * 0.5), radius, radius);
    painter.drawEllipse(QPointF(size * 0.75, size * 0.5), radius, radius);
    return image;
}

QImage letterL(int size, int margin, int thickness)
{
    QImage image = blank(size);
    QPainter painter(&image);
    painter.fillRect(margin, margin, thickness, size - 2 * margin, QColor(90, 90, 90));
    painter.fillRect(margin, size - margin - thickness, size - 2 * margin, thickness, QColor(90, 90, 90));
    return image;
}
} // namespace TestImages

double polygonArea(const std::vector<Vec2>& points)
{
    double sum = 0;
    for (size_t i = 0, n = points.size(); i < n; ++i) {
        const Vec2& p = points[i];
        const Vec2& q = points[(i + 1) % n];
        sum += double(p.x) * double(q.y) - double(q.x) * double(p.y);
    }
    return sum * 0.5;
}

bool pointInPolygon(const std::vector<Vec2>& polygon, Vec2 p)
{
    bool in = false;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const Vec2& a = polygon[i];
        const Vec2& b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            in = !in;
    }
    return in;
}

bool writeHugePng(const QString& path, int side)
{
    FILE* file = std::fopen(path.toLocal8Bit().constData(), "wb");
    if (!file)
        return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool ok = png && info;
    if (ok && setjmp(png_jmpbuf(png)) == 0) {
        png_init_io(png, file);
        png_set_compression_level(png, 1);
        png_set_IHDR(png, info, png_uint_32(side), png_uint_32(side), 8, PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png, info);
        std::vector<png_byte> empty(size_t(side) * 4, 0), solid(size_t(side) * 4, 0);
        for (int x = side / 4; x < side * 3 / 4; ++x) {
            solid[size_t(x) * 4 + 0] = 200;
            solid[size_t(x) * 4 + 3] = 255;
        }
        for (int y = 0; y < side; ++y)
            png_write_row(png, (y >= side / 4 && y < side * 3 / 4 ? solid : empty).data());
        png_write_end(png, nullptr);
    } else {
        ok = false;
    }
    png_destroy_write_struct(png ? &png : nullptr, info ? &info : nullptr);
    std::fclose(file);
    return ok;
}
