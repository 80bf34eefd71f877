#include "views/scenerenderer.h"

#include "base/log.h"
#include "views/shapegeometry.h"
#include "views/texturecache.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

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

void setWorldToClip(QOpenGLShaderProgram& program, const ViewCamera& camera)
{
    const auto m = camera.worldToClip();
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
    ok = ok && m_triangles.create() && m_lines.create() && m_overlay.create();
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
    const auto put = [](QOpenGLBuffer& buffer, const std::vector<GeomVertex>& vertices) {
        buffer.bind();
        buffer.allocate(vertices.data(), int(vertices.size() * sizeof(GeomVertex)));
        buffer.release();
        return int(vertices.size());
    };
    m_triangleCount = put(m_triangles, geometry.triangles);
    m_lineCount = put(m_lines, geometry.lines);
    m_images = geometry.images;
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

void SceneRenderer::drawColored(QOpenGLBuffer& buffer, GLenum mode, int first, int count, const ViewCamera& camera)
{
    if (count == 0)
        return;
    m_colorProgram.bind();
    setWorldToClip(m_colorProgram, camera);
    m_colorProgram.setUniformValue("pixelToClip", QVector2D(2.f / std::max(1, camera.pixelSize.width()),
                                                            2.f / std::max(1, camera.pixelSize.height())));
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
    glDrawArrays(mode, first, count);
    glDisableVertexAttribArray(GLuint(position));
    glDisableVertexAttribArray(GLuint(offset));
    glDisableVertexAttribArray(GLuint(colour));
    buffer.release();
    m_colorProgram.release();
}

void SceneRenderer::drawImages(const ViewCamera& camera)
{
    if (m_images.empty())
        return;
    m_textureProgram.bind();
    setWorldToClip(m_textureProgram, camera);
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

void SceneRenderer::paint(const ViewCamera& camera, const ViewColors& colors, Vec2 cursor)
{
    glClearColor(colors.background.redF(), colors.background.greenF(), colors.background.blueF(), 1);
    glClear(GL_COLOR_BUFFER_BIT);
    if (!m_ready)
        return;
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    int gridCount = 0;
    const std::vector<GeomVertex> lines = overlay(camera, colors, cursor, &gridCount);
    m_overlay.bind();
    m_overlay.allocate(lines.data(), int(lines.size() * sizeof(GeomVertex)));
    m_overlay.release();
    // Grid first, then the scene, then the axes and the cursor on top.
    drawColored(m_overlay, GL_LINES, 0, gridCount, camera);
    drawImages(camera);
    drawColored(m_triangles, GL_TRIANGLES, 0, m_triangleCount, camera);
    drawColored(m_lines, GL_LINES, 0, m_lineCount, camera);
    drawColored(m_overlay, GL_LINES, gridCount, int(lines.size()) - gridCount, camera);
}

void SceneRenderer::release()
{
    if (!m_ready)
        return;
    m_textures.clear();
    m_triangles.destroy();
    m_lines.destroy();
    m_overlay.destroy();
    m_colorProgram.removeAllShaders();
    m_textureProgram.removeAllShaders();
    m_ready = false;
}
