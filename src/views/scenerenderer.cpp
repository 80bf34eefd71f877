#include "views/scenerenderer.h"

#include "base/log.h"
#include "views/scenegeometryupdate.h"
#include "views/shapegeometry.h"
#include "views/texturecache.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <QOpenGLFramebufferObject>
#include <QOpenGLTexture>

#include <cmath>
#include <cstddef>

namespace
{
const char* kColorVertex = R"(
attribute vec2 position;
attribute vec2 offset;
attribute vec4 colour;
uniform mat4 worldToClip;
uniform vec2 pixelToClip;
varying vec4 fragmentColour;
void main()
{
    gl_Position = worldToClip * vec4(position, 0.0, 1.0) + vec4(offset * pixelToClip, 0.0, 0.0);
    fragmentColour = colour;
}
)";

const char* kColorFragment = R"(
varying vec4 fragmentColour;
void main()
{
    gl_FragColor = fragmentColour;
}
)";

const char* kTextureVertex = R"(
attribute vec2 position;
attribute vec2 texCoord;
uniform mat4 worldToClip;
varying vec2 fragmentTexCoord;
void main()
{
    gl_Position = worldToClip * vec4(position, 0.0, 1.0);
    fragmentTexCoord = texCoord;
}
)";

const char* kTextureFragment = R"(
uniform sampler2D image;
uniform vec4 tint;
varying vec2 fragmentTexCoord;
void main()
{
    gl_FragColor = texture2D(image, fragmentTexCoord) * tint;
}
)";

// Grid spacing: a power of ten giving lines at least 16 pixels apart.
double gridSpacing(double worldPerPixel)
{
    double spacing = std::pow(10.0, std::ceil(std::log10(std::max(worldPerPixel * 16, 1e-30))));
    return spacing;
}

// Grid lines, axes and the cursor for the visible area.
std::vector<GeomVertex> overlay(const ViewCamera& camera, const ViewColors& colors, Vec2 cursor, int* gridCount)
{
    std::vector<GeomVertex> lines;
    const Vec2 lo = camera.toWorld(QPointF(0, camera.pixelSize.height()));
    const Vec2 hi = camera.toWorld(QPointF(camera.pixelSize.width(), 0));
    const double spacing = gridSpacing(camera.worldPerPixel());
    const double x0 = std::floor(lo.x / spacing), x1 = std::ceil(hi.x / spacing);
    const double y0 = std::floor(lo.y / spacing), y1 = std::ceil(hi.y / spacing);
    if (std::isfinite(x0) && std::isfinite(y0) && x1 - x0 < 1000 && y1 - y0 < 1000) {
        QColor minor = colors.grid;
        QColor major = colors.grid.lighter(140);
        // Counted loops: at huge coordinates adding one to x0 may change nothing.
        for (int k = 0; k <= int(x1 - x0); ++k) {
            const double i = x0 + k;
            const float x = float(i * spacing);
            const QColor& c = std::fmod(std::abs(i), 10.0) == 0 ? major : minor;
            lines.push_back(geomVertex({x, lo.y}, c));
            lines.push_back(geomVertex({x, hi.y}, c));
        }
        for (int k = 0; k <= int(y1 - y0); ++k) {
            const double i = y0 + k;
            const float y = float(i * spacing);
            const QColor& c = std::fmod(std::abs(i), 10.0) == 0 ? major : minor;
            lines.push_back(geomVertex({lo.x, y}, c));
            lines.push_back(geomVertex({hi.x, y}, c));
        }
    }
    *gridCount = int(lines.size());
    lines.push_back(geomVertex({lo.x, 0}, colors.axisX));
    lines.push_back(geomVertex({hi.x, 0}, colors.axisX));
    lines.push_back(geomVertex({0, lo.y}, colors.axisY));
    lines.push_back(geomVertex({0, hi.y}, colors.axisY));
    if (std::isfinite(cursor.x) && std::isfinite(cursor.y)) {
        for (auto [ox, oy] : {std::pair{-8.f, 0.f}, {8.f, 0.f}, {0.f, -8.f}, {0.f, 8.f}}) {
            lines.push_back(geomVertex(cursor, colors.cursor));
            lines.push_back(geomVertex(cursor, colors.cursor, ox, oy));
        }
    }
    return lines;
}

// `guard` shrinks the picture in clip space by that factor: the viewport is
// as many times larger, centred on the frame buffer (see setViewport).
void setWorldToClip(QOpenGLShaderProgram& program, const ViewCamera& camera, int guard)
{
    auto m = camera.worldToClip();
    // Column-major: rows 0 and 1 give clip x and y.
    for (int column = 0; column < 4; ++column) {
        m[size_t(column * 4)] /= float(guard);
        m[size_t(column * 4 + 1)] /= float(guard);
    }
    program.setUniformValue("worldToClip", QMatrix4x4(m.data()).transposed());
}
} // namespace

SceneRenderer::SceneRenderer() = default;

SceneRenderer::~SceneRenderer() = default;

bool SceneRenderer::initialize()
{
    initializeOpenGLFunctions();
    bool ok = m_colorProgram.addShaderFromSourceCode(QOpenGLShader::Vertex, kColorVertex) &&
              m_colorProgram.addShaderFromSourceCode(QOpenGLShader::Fragment, kColorFragment) &&
              m_colorProgram.link();
    ok = ok && m_textureProgram.addShaderFromSourceCode(QOpenGLShader::Vertex, kTextureVertex) &&
         m_textureProgram.addShaderFromSourceCode(QOpenGLShader::Fragment, kTextureFragment) &&
         m_textureProgram.link();
    ok = ok && m_triangles.create() && m_lines.create() && m_overlay.create() && m_shared.create() &&
         m_sharedIndices.create();
    if (!ok) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not set up OpenGL drawing: %1%2")
                               .arg(m_colorProgram.log(), m_textureProgram.log()));
        return false;
    }
    m_overlay.setUsagePattern(QOpenGLBuffer::StreamDraw);
    m_ready = true;
    return true;
}

void SceneRenderer::upload(const SceneGeometry& geometry, TextureCache& textures)
{
    if (!m_ready)
        return;
    // Room to spare, so that updates that grow the arrays a little fit.
    const auto put = [](QOpenGLBuffer& buffer, const std::vector<GeomVertex>& vertices, int* room) {
        const int count = int(vertices.size());
        *room = count + count / 8 + 1024;
        buffer.bind();
        buffer.allocate(*room * int(sizeof(GeomVertex)));
        buffer.write(0, vertices.data(), count * int(sizeof(GeomVertex)));
        buffer.release();
        return count;
    };
    ++m_uploadVersion;
    m_triangleCount = put(m_triangles, geometry.triangles, &m_triangleRoom);
    m_lineCount = put(m_lines, geometry.lines, &m_lineRoom);
    int sharedRoom = 0;
    m_sharedVertexCount = put(m_shared, geometry.sharedVertices, &sharedRoom);
    m_sharedTriangleIndices = int(geometry.sharedTriangles.size());
    m_sharedLineIndices = int(geometry.sharedLines.size());
    if (m_sharedVertexCount > 0) {
        // Triangle indices first, then the line indices.
        const int triangleBytes = int(geometry.sharedTriangles.size() * sizeof(std::uint32_t));
        const int lineBytes = int(geometry.sharedLines.size() * sizeof(std::uint32_t));
        m_sharedIndices.bind();
        m_sharedIndices.allocate(triangleBytes + lineBytes);
        m_sharedIndices.write(0, geometry.sharedTriangles.data(), triangleBytes);
        m_sharedIndices.write(triangleBytes, geometry.sharedLines.data(), lineBytes);
        m_sharedIndices.release();
    }
    m_triangleBricks.rebuild(geometry.triangles);
    m_lineBricks.rebuild(geometry.lines);
    m_chunks = geometry.chunks;
    m_images = geometry.images;
    m_cacheStaleLo = {1, 1};
    m_cacheStaleHi = {-1, -1};
    uploadTextures(textures);
}

void SceneRenderer::update(const SceneGeometry& geometry, const GeometryChange& change, TextureCache& textures)
{
    if (!m_ready)
        return;
    if (change.full || m_sharedVertexCount > 0 || geometry.triangles.size() > size_t(m_triangleRoom) ||
        geometry.lines.size() > size_t(m_lineRoom)) {
        upload(geometry, textures);
        return;
    }
    const auto write = [](QOpenGLBuffer& buffer, const std::vector<GeomVertex>& vertices,
                          const std::vector<std::pair<size_t, size_t>>& stretches) {
        if (stretches.empty())
            return;
        buffer.bind();
        for (const auto& [first, count] : stretches)
            buffer.write(int(first * sizeof(GeomVertex)), vertices.data() + first, int(count * sizeof(GeomVertex)));
        buffer.release();
    };
    write(m_triangles, geometry.triangles, change.triangles);
    write(m_lines, geometry.lines, change.lines);
    const auto measure = [](VertexBricks& bricks, const std::vector<GeomVertex>& vertices,
                            const std::vector<std::pair<size_t, size_t>>& stretches) {
        bricks.refresh(vertices, 0, 0);
        for (const auto& [first, count] : stretches)
            bricks.refresh(vertices, first, count);
    };
    measure(m_triangleBricks, geometry.triangles, change.triangles);
    measure(m_lineBricks, geometry.lines, change.lines);
    m_triangleCount = int(geometry.triangles.size());
    m_lineCount = int(geometry.lines.size());
    m_chunks = geometry.chunks;
    m_images = geometry.images;
    uploadTextures(textures);
    // The cached picture keeps what did not change.
    if (change.hi.x >= change.lo.x) {
        if (m_cacheStaleHi.x < m_cacheStaleLo.x) {
            m_cacheStaleLo = change.lo;
            m_cacheStaleHi = change.hi;
        } else {
            m_cacheStaleLo = {std::min(m_cacheStaleLo.x, change.lo.x), std::min(m_cacheStaleLo.y, change.lo.y)};
            m_cacheStaleHi = {std::max(m_cacheStaleHi.x, change.hi.x), std::max(m_cacheStaleHi.y, change.hi.y)};
        }
    }
}

void SceneRenderer::uploadTextures(TextureCache& textures)
{
    for (const ImageDraw& image : m_images) {
        const TextureCache::Entry& entry = textures.entry(image.path);
        Texture& texture = m_textures[image.path];
        if (texture.texture && texture.version == entry.version)
            continue;
        texture.texture = std::make_unique<QOpenGLTexture>(entry.image, QOpenGLTexture::DontGenerateMipMaps);
        texture.texture->setMinificationFilter(QOpenGLTexture::Linear);
        texture.texture->setMagnificationFilter(QOpenGLTexture::Linear);
        texture.texture->setWrapMode(QOpenGLTexture::ClampToEdge);
        texture.version = entry.version;
    }
}

void SceneRenderer::drawColored(QOpenGLBuffer& buffer, GLenum mode, int first, int count, const ViewCamera& camera,
                                QOpenGLBuffer* indices)
{
    if (count == 0)
        return;
    m_colorProgram.bind();
    setWorldToClip(m_colorProgram, camera, m_guard);
    m_colorProgram.setUniformValue("pixelToClip",
                                   QVector2D(2.f / float(m_guard * std::max(1, camera.pixelSize.width())),
                                             2.f / float(m_guard * std::max(1, camera.pixelSize.height()))));
    buffer.bind();
    const int stride = int(sizeof(GeomVertex));
    const int position = m_colorProgram.attributeLocation("position");
    const int offset = m_colorProgram.attributeLocation("offset");
    const int colour = m_colorProgram.attributeLocation("colour");
    glEnableVertexAttribArray(GLuint(position));
    glEnableVertexAttribArray(GLuint(offset));
    glEnableVertexAttribArray(GLuint(colour));
    glVertexAttribPointer(GLuint(position), 2, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(offsetof(GeomVertex, x)));
    glVertexAttribPointer(GLuint(offset), 2, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(offsetof(GeomVertex, ox)));
    glVertexAttribPointer(GLuint(colour), 4, GL_UNSIGNED_BYTE, GL_TRUE, stride,
                          reinterpret_cast<const void*>(offsetof(GeomVertex, r)));
    if (indices) {
        indices->bind();
        glDrawElements(mode, count, GL_UNSIGNED_INT,
                       reinterpret_cast<const void*>(size_t(first) * sizeof(std::uint32_t)));
        indices->release();
    } else {
        glDrawArrays(mode, first, count);
    }
    glDisableVertexAttribArray(GLuint(position));
    glDisableVertexAttribArray(GLuint(offset));
    glDisableVertexAttribArray(GLuint(colour));
    buffer.release();
    m_colorProgram.release();
}

void SceneRenderer::drawChunks(QOpenGLBuffer& buffer, GLenum mode, bool lines, const ViewCamera& camera,
                               const Vec2* area)
{
    // The view's box (or the area given), with a margin for markers drawn
    // in pixels around their points.
    const double margin = 16 * camera.worldPerPixel();
    const Vec2 a = area ? area[0] : camera.toWorld(QPointF(0, camera.pixelSize.height()));
    const Vec2 b = area ? area[1] : camera.toWorld(QPointF(camera.pixelSize.width(), 0));
    const double lox = double(a.x) - margin, hix = double(b.x) + margin;
    const double loy = double(a.y) - margin, hiy = double(b.y) + margin;
    // Runs of neighbouring visible chunks go in one draw call; of a chunk
    // only partly in sight, the runs of vertices that reach the box.
    const VertexBricks& bricks = lines ? m_lineBricks : m_triangleBricks;
    int first = 0, count = 0;
    for (const GeomChunk& chunk : m_chunks) {
        const int start = lines ? chunk.firstLine : chunk.firstTriangle;
        const int n = lines ? chunk.lineCount : chunk.triangleCount;
        const bool visible = n > 0 && chunk.hi.x >= lox && chunk.lo.x <= hix && chunk.hi.y >= loy && chunk.lo.y <= hiy;
        if (!visible)
            continue;
        const bool whole = chunk.lo.x >= lox && chunk.hi.x <= hix && chunk.lo.y >= loy && chunk.hi.y <= hiy;
        const std::vector<std::pair<int, int>> runs =
            whole ? std::vector<std::pair<int, int>>{{start, n}} : bricks.runs(start, n, lox, loy, hix, hiy);
        for (const auto& [runFirst, runCount] : runs) {
            if (count > 0 && first + count == runFirst) {
                count += runCount;
                continue;
            }
            drawColored(buffer, mode, first, count, camera);
            m_drawnVertices += size_t(count);
            first = runFirst;
            count = runCount;
        }
    }
    drawColored(buffer, mode, first, count, camera);
    m_drawnVertices += size_t(count);
}

void SceneRenderer::drawShared(GLenum mode, bool lines, const ViewCamera& camera)
{
    if (m_sharedVertexCount == 0)
        return;
    const int first = lines ? m_sharedTriangleIndices : 0;
    const int count = lines ? m_sharedLineIndices : m_sharedTriangleIndices;
    drawColored(m_shared, mode, first, count, camera, &m_sharedIndices);
    m_drawnVertices += size_t(count);
}

void SceneRenderer::drawImages(const ViewCamera& camera)
{
    if (m_images.empty())
        return;
    m_textureProgram.bind();
    setWorldToClip(m_textureProgram, camera, m_guard);
    m_textureProgram.setUniformValue("image", 0);
    const int position = m_textureProgram.attributeLocation("position");
    const int texCoord = m_textureProgram.attributeLocation("texCoord");
    glEnableVertexAttribArray(GLuint(position));
    glEnableVertexAttribArray(GLuint(texCoord));
    for (const ImageDraw& image : m_images) {
        auto it = m_textures.find(image.path);
        if (it == m_textures.end() || !it->second.texture)
            continue;
        const float corners[8] = {image.corners[0].x, image.corners[0].y, image.corners[1].x, image.corners[1].y,
                                  image.corners[2].x, image.corners[2].y, image.corners[3].x, image.corners[3].y};
        m_textureProgram.setUniformValue("tint", QVector4D(image.tint.redF(), image.tint.greenF(),
                                                           image.tint.blueF(), image.tint.alphaF() * image.opacity));
        it->second.texture->bind(0);
        glVertexAttribPointer(GLuint(position), 2, GL_FLOAT, GL_FALSE, 0, corners);
        glVertexAttribPointer(GLuint(texCoord), 2, GL_FLOAT, GL_FALSE, 0, image.texCoords.data());
        glDrawArrays(GL_TRIANGLE_FAN, 0, 4);
        it->second.texture->release(0);
    }
    glDisableVertexAttribArray(GLuint(position));
    glDisableVertexAttribArray(GLuint(texCoord));
    m_textureProgram.release();
}

void SceneRenderer::drawScene(const ViewCamera& camera, const Vec2* area)
{
    drawImages(camera);
    m_drawnVertices = 0;
    drawShared(GL_TRIANGLES, false, camera);
    drawChunks(m_triangles, GL_TRIANGLES, false, camera, area);
    drawShared(GL_LINES, true, camera);
    drawChunks(m_lines, GL_LINES, true, camera, area);
}

bool SceneRenderer::cacheCovers(const ViewCamera& camera) const
{
    if (!m_cache || m_cacheVersion != m_uploadVersion || m_cacheViewSize != camera.pixelSize ||
        m_cacheWorldPerPixel != camera.worldPerPixel())
        return false;
    // The view's box inside the cached box (twice the view's size).
    const double wpp = camera.worldPerPixel();
    const double dx = std::fabs(double(camera.center.x) - m_cacheCenter.x) / wpp;
    const double dy = std::fabs(double(camera.center.y) - m_cacheCenter.y) / wpp;
    const double spareX = (m_cache->width() - camera.pixelSize.width()) / 2.0;
    const double spareY = (m_cache->height() - camera.pixelSize.height()) / 2.0;
    return dx <= spareX && dy <= spareY;
}

void SceneRenderer::renderCache(const ViewCamera& camera, GLuint target)
{
    GLint maxSize = 4096;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
    const QSize size(std::min(camera.pixelSize.width() * 2, std::min(int(maxSize), 8192)),
                     std::min(camera.pixelSize.height() * 2, std::min(int(maxSize), 8192)));
    if (!m_cache || m_cache->size() != size) {
        m_cache = std::make_unique<QOpenGLFramebufferObject>(size);
        m_cache->texture(); // created with the object
        m_cacheMultisample.reset();
    }
    // Smooth like the view: drawn multisampled, then resolved into the texture.
    const bool multisample = m_samples > 0 && QOpenGLFramebufferObject::hasOpenGLFramebufferBlit();
    if (multisample && (!m_cacheMultisample || m_cacheMultisample->format().samples() != m_samples)) {
        QOpenGLFramebufferObjectFormat format;
        format.setSamples(m_samples);
        m_cacheMultisample = std::make_unique<QOpenGLFramebufferObject>(size, format);
    }
    QOpenGLFramebufferObject& drawTarget = multisample ? *m_cacheMultisample : *m_cache;
    ViewCamera wide = camera;
    wide.pixelSize = size;
    wide.height = float(camera.worldPerPixel() * size.height());
    drawTarget.bind();
    setViewport(size);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    // Premultiplied colours, so that the picture blends over the grid like the scene would.
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    drawScene(wide);
    if (multisample)
        QOpenGLFramebufferObject::blitFramebuffer(m_cache.get(), m_cacheMultisample.get());
    glBindFramebuffer(GL_FRAMEBUFFER, target);
    setViewport(camera.pixelSize);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    m_cacheVersion = m_uploadVersion;
    m_cacheCenter = camera.center;
    m_cacheWorldPerPixel = camera.worldPerPixel();
    m_cacheViewSize = camera.pixelSize;
    m_cacheCamera = wide;
    m_cacheStaleLo = {1, 1};
    m_cacheStaleHi = {-1, -1};
}

void SceneRenderer::renderCacheArea(GLuint target, const ViewCamera& camera)
{
    // The stale box in the picture's pixels, widened by what markers reach.
    const ViewCamera& wide = m_cacheCamera;
    const QPointF a = wide.toPixel(m_cacheStaleLo), b = wide.toPixel(m_cacheStaleHi);
    constexpr double kMargin = 18;
    const int height = m_cache->height();
    const double left = std::floor(std::min(a.x(), b.x()) - kMargin);
    const double right = std::ceil(std::max(a.x(), b.x()) + kMargin);
    const double top = std::floor(std::min(a.y(), b.y()) - kMargin);
    const double bottom = std::ceil(std::max(a.y(), b.y()) + kMargin);
    const int x0 = int(std::clamp(left, 0.0, double(m_cache->width())));
    const int x1 = int(std::clamp(right, 0.0, double(m_cache->width())));
    // Frame buffer rows count from the bottom.
    const int y0 = int(std::clamp(double(height) - bottom, 0.0, double(height)));
    const int y1 = int(std::clamp(double(height) - top, 0.0, double(height)));
    m_cacheStaleLo = {1, 1};
    m_cacheStaleHi = {-1, -1};
    if (x1 <= x0 || y1 <= y0)
        return;
    // A multisampled picture is drawn again whole: redrawn in a box of its
    // multisampled buffer, it does not resolve to the pixels of a fresh one.
    // (Views multisample by default only where drawing is cheap.)
    if (m_samples > 0 && QOpenGLFramebufferObject::hasOpenGLFramebufferBlit()) {
        renderCache(camera, target);
        m_lastFromCache = false;
        return;
    }
    m_cache->bind();
    setViewport(m_cache->size());
    glEnable(GL_SCISSOR_TEST);
    glScissor(x0, y0, x1 - x0, y1 - y0);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    // Only the chunks that can reach those pixels; the scissor keeps the
    // others' pixels as they are.
    const Vec2 area[2] = {wide.toWorld(QPointF(left, bottom)), wide.toWorld(QPointF(right, top))};
    drawScene(wide, area);
    glDisable(GL_SCISSOR_TEST);
    glBindFramebuffer(GL_FRAMEBUFFER, target);
    setViewport(camera.pixelSize);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

void SceneRenderer::drawCache(const ViewCamera& camera)
{
    const float halfW = float(m_cacheWorldPerPixel * m_cache->width() / 2);
    const float halfH = float(m_cacheWorldPerPixel * m_cache->height() / 2);
    const float corners[8] = {m_cacheCenter.x - halfW, m_cacheCenter.y - halfH, m_cacheCenter.x + halfW,
                              m_cacheCenter.y - halfH, m_cacheCenter.x + halfW, m_cacheCenter.y + halfH,
                              m_cacheCenter.x - halfW, m_cacheCenter.y + halfH};
    // Frame buffer textures have their first row at the bottom.
    const float texCoords[8] = {0, 0, 1, 0, 1, 1, 0, 1};
    m_textureProgram.bind();
    setWorldToClip(m_textureProgram, camera, m_guard);
    m_textureProgram.setUniformValue("image", 0);
    m_textureProgram.setUniformValue("tint", QVector4D(1, 1, 1, 1));
    const int position = m_textureProgram.attributeLocation("position");
    const int texCoord = m_textureProgram.attributeLocation("texCoord");
    glEnableVertexAttribArray(GLuint(position));
    glEnableVertexAttribArray(GLuint(texCoord));
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, m_cache->texture());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glVertexAttribPointer(GLuint(position), 2, GL_FLOAT, GL_FALSE, 0, corners);
    glVertexAttribPointer(GLuint(texCoord), 2, GL_FLOAT, GL_FALSE, 0, texCoords);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glDrawArrays(GL_TRIANGLE_FAN, 0, 4);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisableVertexAttribArray(GLuint(position));
    glDisableVertexAttribArray(GLuint(texCoord));
    m_textureProgram.release();
}

void SceneRenderer::paint(const ViewCamera& camera, const ViewColors& colors, Vec2 cursor, GLuint target)
{
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);
    m_samples = int(samples);
    glClearColor(colors.background.redF(), colors.background.greenF(), colors.background.blueF(), 1);
    glClear(GL_COLOR_BUFFER_BIT);
    if (!m_ready)
        return;
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    setViewport(camera.pixelSize);

    int gridCount = 0;
    const std::vector<GeomVertex> lines = overlay(camera, colors, cursor, &gridCount);
    m_overlay.bind();
    m_overlay.allocate(lines.data(), int(lines.size() * sizeof(GeomVertex)));
    m_overlay.release();
    // Grid first, then the scene, then the axes and the cursor on top.
    if (m_showGrid)
        drawColored(m_overlay, GL_LINES, 0, gridCount, camera);
    const bool cached = uploadedVertices() > m_cacheThreshold;
    m_lastFromCache = false;
    if (cached) {
        if (cacheCovers(camera)) {
            m_lastFromCache = true;
            m_drawnVertices = 0;
            if (m_cacheStaleHi.x >= m_cacheStaleLo.x)
                renderCacheArea(target, camera);
        } else {
            renderCache(camera, target);
        }
        drawCache(camera);
    } else {
        m_cache.reset();
        m_cacheMultisample.reset();
        m_cacheStaleLo = {1, 1};
        m_cacheStaleHi = {-1, -1};
        drawScene(camera);
    }
    drawColored(m_overlay, GL_LINES, gridCount, int(lines.size()) - gridCount, camera);
    glViewport(0, 0, camera.pixelSize.width(), camera.pixelSize.height());
    m_guard = 1;
}

void SceneRenderer::setViewport(QSize pixels)
{
    // Software rasterisers send every primitive with a corner outside the
    // clip volume down a slow path, and a scene reaching past the edges of
    // the view has many. A viewport three times the frame buffer's size,
    // centred on it, puts those corners inside the clip volume; the frame
    // buffer's own edges cut the primitives, and each pixel is drawn as
    // before.
    GLint most[2] = {0, 0};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, most);
    m_guard = pixels.width() * 3 <= most[0] && pixels.height() * 3 <= most[1] ? 3 : 1;
    const int margin = (m_guard - 1) / 2;
    glViewport(-margin * pixels.width(), -margin * pixels.height(), m_guard * pixels.width(),
               m_guard * pixels.height());
}

void SceneRenderer::release()
{
    if (!m_ready)
        return;
    m_textures.clear();
    m_cache.reset();
    m_cacheMultisample.reset();
    m_triangles.destroy();
    m_lines.destroy();
    m_overlay.destroy();
    m_shared.destroy();
    m_sharedIndices.destroy();
    m_colorProgram.removeAllShaders();
    m_textureProgram.removeAllShaders();
    m_ready = false;
}
