#pragma once

#include "base/types.h"
#include "views/scenegeometry.h"
#include "views/vertexbricks.h"
#include "views/viewcamera.h"

#include <map>
#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <memory>

class QOpenGLFramebufferObject;
class QOpenGLTexture;
class TextureCache;
struct GeometryChange;
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
    /// Uploads what an update changed in the geometry uploaded last: the
    /// stretches of vertices written, and the new chunks and images; the
    /// cached picture is drawn again only where pixels may have changed. A
    /// full change, or arrays grown past the buffers, upload everything.
    void update(const SceneGeometry& geometry, const GeometryChange& change, TextureCache& textures);
    /// Draws one frame into the frame buffer `target` (the view's own).
    void paint(const ViewCamera& camera, const ViewColors& colors, Vec2 cursor, GLuint target);
    /// Scenes of more vertices than this are drawn into a cached picture
    /// larger than the view; frames that only pan within it draw the picture.
    void setFrameCacheThreshold(size_t vertices) { m_cacheThreshold = vertices; }
    /// Draws the grid lines or leaves them out (the axes and the cursor stay).
    void setShowGrid(bool show) { m_showGrid = show; }
    /// True when the last frame drew the cached picture instead of the scene.
    bool lastFrameFromCache() const { return m_lastFromCache; }
    /// Samples per pixel of the frame buffer the last frame was drawn into
    /// (0 without multisampling); the cached picture is drawn with as many.
    int samples() const { return m_samples; }
    /// Releases the GL objects (the context must be current).
    void release();

    /// Vertices uploaded by the last upload(), triangles plus lines.
    size_t uploadedVertices() const { return size_t(m_triangleCount + m_lineCount + m_sharedVertexCount); }
    /// Vertices drawn by the last frame (those of the chunks in sight).
    size_t drawnVertices() const { return m_drawnVertices; }

private:
    struct Texture
    {
        std::unique_ptr<QOpenGLTexture> texture;
        quint64 version = 0;
    };

    void drawColored(QOpenGLBuffer& buffer, GLenum mode, int first, int count, const ViewCamera& camera,
                     QOpenGLBuffer* indices = nullptr);
    void drawShared(GLenum mode, bool lines, const ViewCamera& camera);
    void drawChunks(QOpenGLBuffer& buffer, GLenum mode, bool lines, const ViewCamera& camera, const Vec2* area);
    void drawImages(const ViewCamera& camera);
    void drawScene(const ViewCamera& camera, const Vec2* area = nullptr);
    bool cacheCovers(const ViewCamera& camera) const;
    void setViewport(QSize pixels);
    void uploadTextures(TextureCache& textures);
    void renderCache(const ViewCamera& camera, GLuint target);
    void renderCacheArea(GLuint target, const ViewCamera& camera);
    void drawCache(const ViewCamera& camera);

    bool m_ready = false;
    int m_guard = 1; ///< the viewport's size over the frame buffer's (setViewport)
    bool m_showGrid = true;
    size_t m_cacheThreshold = 150000;
    bool m_lastFromCache = false;
    quint64 m_uploadVersion = 0;
    std::unique_ptr<QOpenGLFramebufferObject> m_cache;
    /// The cached picture's multisampled frame buffer, resolved into m_cache.
    std::unique_ptr<QOpenGLFramebufferObject> m_cacheMultisample;
    int m_samples = 0;
    quint64 m_cacheVersion = 0;
    Vec2 m_cacheCenter;
    double m_cacheWorldPerPixel = 0;
    ViewCamera m_cacheCamera;            ///< the camera the cached picture was drawn with
    Vec2 m_cacheStaleLo{1, 1};           ///< world box where the cached picture is out of date
    Vec2 m_cacheStaleHi{-1, -1};
    QSize m_cacheViewSize;
    size_t m_drawnVertices = 0;
    QOpenGLShaderProgram m_colorProgram;
    QOpenGLShaderProgram m_textureProgram;
    QOpenGLBuffer m_triangles{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_lines{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_overlay{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_shared{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_sharedIndices{QOpenGLBuffer::IndexBuffer};
    int m_triangleCount = 0;
    int m_lineCount = 0;
    int m_triangleRoom = 0; ///< vertices the triangle buffer holds
    int m_lineRoom = 0;
    int m_sharedVertexCount = 0;
    int m_sharedTriangleIndices = 0;
    int m_sharedLineIndices = 0;
    std::vector<GeomChunk> m_chunks;
    /// Boxes of runs of the uploaded vertices: a small area's redraw (and a
    /// close view) submits only the runs of its chunks that reach it.
    VertexBricks m_triangleBricks;
    VertexBricks m_lineBricks;
    std::vector<ImageDraw> m_images;
    std::map<QString, Texture> m_textures;
};
