#pragma once

#include "base/types.h"
#include "views/scenegeometry.h"

#include <map>
#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <memory>

class QOpenGLTexture;
class TextureCache;
class ViewCamera;
struct ViewColors;

/// Draws a scene geometry with OpenGL: the geometry lives in vertex buffers,
/// uploaded once per scene change, so a frame only sets the camera and issues
/// a few draw calls. The grid, the axes and the cursor are made per frame
/// (they depend on the visible area, not on the scene). Must be used with the
/// owning view's context current.
class SceneRenderer : protected QOpenGLFunctions
{
public:
    SceneRenderer();
    ~SceneRenderer();
    SceneRenderer(const SceneRenderer&) = delete;
    SceneRenderer& operator=(const SceneRenderer&) = delete;

    /// Creates the shader programs and buffers; false (logged) when the context cannot.
    bool initialize();
    /// Uploads a scene geometry (and the textures of its images) to the buffers.
    void upload(const SceneGeometry& geometry, TextureCache& textures);
    /// Draws one frame.
    void paint(const ViewCamera& camera, const ViewColors& colors, Vec2 cursor);
    /// Releases the GL objects (the context must be current).
    void release();

    /// Vertices uploaded by the last upload(), triangles plus lines.
    size_t uploadedVertices() const { return m_triangleCount + m_lineCount; }

private:
    struct Texture
    {
        std::unique_ptr<QOpenGLTexture> texture;
        quint64 version = 0;
    };

    void drawColored(QOpenGLBuffer& buffer, GLenum mode, int first, int count, const ViewCamera& camera);
    void drawImages(const ViewCamera& camera);

    bool m_ready = false;
    QOpenGLShaderProgram m_colorProgram;
    QOpenGLShaderProgram m_textureProgram;
    QOpenGLBuffer m_triangles{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_lines{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_overlay{QOpenGLBuffer::VertexBuffer};
    int m_triangleCount = 0;
    int m_lineCount = 0;
    std::vector<ImageDraw> m_images;
    std::map<QString, Texture> m_textures;
};
