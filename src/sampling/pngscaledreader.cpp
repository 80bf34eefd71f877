#include "sampling/pngscaledreader.h"

#include <png.h>

#include <QFile>

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace
{
// libpng reports errors by longjmp; the message is kept for the caller.
struct ReadState
{
    QFile* file = nullptr;
    char message[256] = {};
};

void readData(png_structp png, png_bytep data, png_size_t length)
{
    auto* state = static_cast<ReadState*>(png_get_io_ptr(png));
    if (state->file->read(reinterpret_cast<char*>(data), qint64(length)) != qint64(length))
        png_error(png, "the file ends early");
}

void onError(png_structp png, png_const_charp message)
{
    auto* state = static_cast<ReadState*>(png_get_error_ptr(png));
    std::snprintf(state->message, sizeof state->message, "%s", message);
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

// The decoding proper. Everything with a destructor lives in the caller or
// is made before setjmp, so that libpng's longjmp skips none.
struct Buffers
{
    std::vector<std::uint8_t> row;
    std::vector<std::uint64_t> sums;   // premultiplied colour and alpha per output pixel
    std::vector<std::uint32_t> counts; // source pixels per output pixel
    std::vector<int> column;           // the output column of each source column
};

bool decode(png_structp png, png_infop info, QSize size, Buffers& b, QImage& out)
{
    const png_uint_32 width = png_get_image_width(png, info);
    const png_uint_32 height = png_get_image_height(png, info);
    const int w = size.width(), h = size.height();
    b.row.resize(size_t(width) * 4);
    b.sums.assign(size_t(w) * 4, 0);
    b.counts.assign(size_t(w), 0);
    b.column.resize(width);
    for (png_uint_32 x = 0; x < width; ++x)
        b.column[x] = int(std::uint64_t(x) * std::uint64_t(w) / width);
    if (setjmp(png_jmpbuf(png)))
        return false;
    auto& sums = b.sums;
    auto& counts = b.counts;
    const auto& column = b.column;

    int outRow = 0;
    const auto flush = [&] {
        auto* line = reinterpret_cast<QRgb*>(out.scanLine(outRow));
        for (int x = 0; x < w; ++x) {
            const std::uint64_t n = counts[size_t(x)];
            const std::uint64_t* s = &sums[size_t(x) * 4];
            const std::uint64_t a = s[3];
            // Colour weighted by alpha, so transparent pixels lend no colour.
            line[x] = n && a ? qRgba(int((s[0] + a / 2) / a), int((s[1] + a / 2) / a), int((s[2] + a / 2) / a),
                                     int((a + n / 2) / n))
                             : 0;
        }
        std::fill(sums.begin(), sums.end(), std::uint64_t(0));
        std::fill(counts.begin(), counts.end(), 0u);
    };
    for (png_uint_32 y = 0; y < height; ++y) {
        const int target = int(std::uint64_t(y) * std::uint64_t(h) / height);
        if (target != outRow) {
            flush();
            outRow = target;
        }
        png_read_row(png, b.row.data(), nullptr);
        const std::uint8_t* p = b.row.data();
        for (png_uint_32 x = 0; x < width; ++x, p += 4) {
            const size_t c = size_t(column[x]);
            const std::uint32_t a = p[3];
            ++counts[c];
            std::uint64_t* s = &sums[c * 4];
            s[0] += std::uint32_t(p[0]) * a;
            s[1] += std::uint32_t(p[1]) * a;
            s[2] += std::uint32_t(p[2]) * a;
            s[3] += a;
        }
    }
    flush();
    return true;
}
} // namespace

QImage readPngShrunk(const QString& path, QSize size, bool* handled, QString* error)
{
    *handled = false;
    QFile file(path);
    if (!size.isValid() || size.isEmpty() || !file.open(QIODevice::ReadOnly))
        return QImage();
    png_byte signature[8];
    if (file.read(reinterpret_cast<char*>(signature), 8) != 8 || png_sig_cmp(signature, 0, 8) != 0)
        return QImage();

    ReadState state;
    state.file = &file;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &state, onError, onWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        return QImage();
    }
    png_set_read_fn(png, &state, readData);
    png_set_sig_bytes(png, 8);
#ifdef PNG_IGNORE_ADLER32
    // The chunks' CRCs still guard the data; zlib's second checksum of the
    // same bytes costs a tenth of the decoding.
    png_set_option(png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
#endif

    QImage out;
    Buffers buffers;
    volatile bool ok = false;
    volatile bool take = false;
    if (!setjmp(png_jmpbuf(png))) {
        png_read_info(png, info);
        const png_uint_32 width = png_get_image_width(png, info);
        const png_uint_32 height = png_get_image_height(png, info);
        take = png_get_interlace_type(png, info) == PNG_INTERLACE_NONE && png_uint_32(size.width()) <= width
               && png_uint_32(size.height()) <= height;
        if (take) {
            // Whatever the file holds, rows arrive as 8-bit RGBA.
            png_set_expand(png);
            png_set_strip_16(png);
            png_set_gray_to_rgb(png);
            png_set_add_alpha(png, 0xff, PNG_FILLER_AFTER);
            png_read_update_info(png, info);
            out = QImage(size, QImage::Format_ARGB32);
            ok = !out.isNull() && png_get_rowbytes(png, info) == size_t(width) * 4
                 && decode(png, info, size, buffers, out);
        }
    }
    png_destroy_read_struct(&png, &info, nullptr);
    *handled = take || state.message[0] != 0;
    if (!ok) {
        if (error && *handled)
            *error = state.message[0] ? QString::fromUtf8(state.message) : QStringLiteral("the PNG file could not be decoded");
        return QImage();
    }
    return out;
}
