// Frame times of the editor view drawing large scenes (10,000 and 40,000
// bodies with four fixtures each): panning, where only the camera changes,
// and a full rebuild after a scene change. Run it on a real X server; under
// `make bench` without a display it runs inside xvfb-run with Mesa's llvmpipe.
#include "largescene.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "views/editorview.h"
#include "views/texturecache.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
// Paints one frame now and waits until OpenGL has finished drawing it.
double frameMilliseconds(EditorView& view)
{
    QElapsedTimer timer;
    timer.start();
    view.repaint();
    view.makeCurrent();
    view.context()->functions()->glFinish();
    view.doneCurrent();
    return double(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void benchScene(int bodies, const QTemporaryDir& dir)
{
    const QString path = dir.filePath(QStringLiteral("large-%1.plax").arg(bodies));
    if (!saveSceneFile(*makeLargeScene(false, bodies), path)) {
        std::printf("could not write %s\n", qPrintable(path));
        return;
    }
    EditorDocument document;
    if (!document.load(path)) {
        std::printf("could not read %s\n", qPrintable(path));
        return;
    }
    EditorView view(document, std::make_shared<TextureCache>());
    view.resize(1280, 800);
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) {
        std::printf("the view was not shown\n");
        return;
    }
    view.zoomToFit();
    frameMilliseconds(view);
    view.makeCurrent();
    std::printf("OpenGL renderer: %s\n",
                reinterpret_cast<const char*>(view.context()->functions()->glGetString(GL_RENDERER)));
    view.doneCurrent();

    // Panning: the geometry stays in its buffers; only the camera moves.
    std::vector<double> pan;
    const ViewCamera start = view.camera();
    for (int i = 0; i < 30; ++i) {
        view.setView({start.center.x + float(i) * start.height * 0.01f, start.center.y}, start.height);
        pan.push_back(frameMilliseconds(view));
    }
    // Zoomed in to a tenth of the scene: most geometry is outside the view.
    std::vector<double> zoomed;
    for (int i = 0; i < 30; ++i) {
        view.setView({start.center.x + float(i) * 0.2f, start.center.y}, start.height / 10);
        zoomed.push_back(frameMilliseconds(view));
    }
    view.setView(start.center, start.height);
    // A full rebuild: the scene changed, the geometry is built and uploaded again.
    std::vector<double> rebuild;
    std::vector<double> build;
    for (int i = 0; i < 5; ++i) {
        view.sceneChanged();
        rebuild.push_back(frameMilliseconds(view));
        build.push_back(view.lastBuildMilliseconds());
    }
    const double panMs = median(pan);
    const SceneGeometry& g = view.geometry();
    std::printf("render %6d bodies %6zu fixtures: %7zu triangle and %7zu line vertices\n", bodies,
                document.world().fixtureCount(), g.triangles.size(), g.lines.size());
    std::printf("  pan frame      %7.2f ms (%5.1f fps)  goal < 33 ms: %s\n", panMs, 1000 / panMs,
                panMs < 33 ? "met" : "MISSED");
    std::printf("  zoomed-in pan  %7.2f ms (%5.1f fps)\n", median(zoomed), 1000 / median(zoomed));
    std::printf("  full rebuild   %7.2f ms (geometry build %.2f ms, then upload and frame)\n", median(rebuild),
                median(build));
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    Log::setThreshold(LOG_ERROR);
    QTemporaryDir dir;
    for (int bodies : {10000, 40000})
        benchScene(bodies, dir);
    return 0;
}
