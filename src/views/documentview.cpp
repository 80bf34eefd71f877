#include "views/documentview.h"

#include "base/log.h"
#include "base/settings.h"

#include <QCloseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QSurfaceFormat>
#include <QVariant>

#include <algorithm>
#include <iterator>

DocumentView::DocumentView(EditorDocument& document, QWidget* parent) : QOpenGLWidget(parent), m_document(document)
{
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    const QVariant chosen = openAppSettings()->value(QLatin1String(kSamplesKey));
    const int samples = chosen.isValid() ? chosen.toInt() : defaultSamples();
    format.setSamples(std::clamp(samples, 0, 16));
    setFormat(format);
}

DocumentView::~DocumentView() = default;

bool DocumentView::isSoftwareRenderer(const QString& rendererName)
{
    static const char* const kSoftware[] = {"llvmpipe", "softpipe", "swrast", "software rasterizer", "swiftshader",
                                            "microsoft basic render"};
    const QString name = rendererName.toLower();
    return std::any_of(std::begin(kSoftware), std::end(kSoftware),
                       [&name](const char* word) { return name.contains(QLatin1String(word)); });
}

int DocumentView::defaultSamples()
{
    static const int samples = [] {
        QOpenGLContext context;
        QOffscreenSurface surface;
        surface.create();
        if (!context.create() || !context.makeCurrent(&surface))
            return 0;
        const auto* text = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
        const QString renderer = QString::fromLatin1(text ? text : "");
        context.doneCurrent();
        const int chosen = isSoftwareRenderer(renderer) ? 0 : kRequestedSamples;
        plaxLog(LOG_DEBUG, QStringLiteral("OpenGL renderer %1: views draw with %2 samples per pixel")
                               .arg(renderer)
                               .arg(chosen));
        return chosen;
    }();
    return samples;
}

void DocumentView::closeEvent(QCloseEvent* event)
{
    if (m_closed) {
        event->accept();
        return;
    }
    if (m_closeGuard && !m_closeGuard(this)) {
        event->ignore();
        return;
    }
    aboutToClose();
    m_closed = true;
    event->accept();
    emit documentViewClosing(this);
}
