// Frame times of the editor view drawing large scenes (10,000 and 40,000
// bodies with four fixtures each): panning, where only the camera changes,
// an edit of one body and the first pick after it, and a full rebuild after
// a scene change; building the picker and its queries; the player's
// frames of the 10,000-body scene; dragging a vertex of a huge polygon. Each
// figure is a median and is printed with its goal. Run it on a real X
// server; under `make bench` without a display it runs inside xvfb-run with
// Mesa's llvmpipe. Processor times are printed too: on a machine shared with
// other work they show the work a frame takes when wall times cannot.
#include "largescene.h"
#include "renderbench.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "io/scenewriter.h"
#include "editing/scriptcommand.h"
#include "model/metaworld.h"
#include "api/scriptapisupport.h"
#include "api/scriptbody.h"
#include "engine/scriptdocument.h"
#include "views/editorview.h"
#include "views/playerview.h"
#include "views/scenepicker.h"
#include "views/texturecache.h"

#include <QApplication>
#include <QDir>
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
double frameMilliseconds(QOpenGLWidget& view)
{
    return timeFrame(view).wallMs;
}

double median(std::vector<double> values)
{
    return medianOf(std::move(values));
}

// Edits of one body each, as the properties panel makes them (one undo step
// through the script API), each followed by a frame and then by a click's
// hit test: the first pick brings the view's picker up to date.
void benchEdits(EditorView& view, EditorDocument& document)
{
    std::vector<FrameTime> frames;
    std::vector<double> builds;
    std::vector<double> firstPicks;
    size_t pickHits = 0;
    size_t parts = 0;
    const auto& bodies = document.world().bodies();
    view.picker(); // a click before the edits
    for (int i = 0; i < 15; ++i) {
        const MetaBody* body = bodies[size_t(i * 7919) % bodies.size()].get();
        QElapsedTimer timer;
        timer.start();
        {
            ScriptDocumentScope scope(&document);
            UndoMacroScope macro(document.undoStack(), QStringLiteral("change angle"));
            ScriptBody handle = ScriptApi::bodyHandle(body);
            BodyApi::setAngle(&handle, body->angle + 0.3f);
        }
        FrameTime frame = timeFrame(view);
        frame.wallMs = double(timer.nsecsElapsed()) / 1e6;
        frames.push_back(frame);
        builds.push_back(view.lastBuildMilliseconds());
        parts = std::max(parts, view.lastPartsDrawn());
        // A click on the edited body, as the next selection would make it.
        timer.restart();
        const ScenePicker& picker = view.picker();
        pickHits += picker.pick(EditMode::Bodies, body->position, view.pickTolerance(), document.selection()).size();
        firstPicks.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    printFrame("edit of one body (edit and frame):", medianFrame(frames));
    std::printf("  %-34s drawing brought up to date in %.2f ms, at most %zu parts drawn again\n", "", median(builds),
                parts);
    const double firstPick = median(firstPicks);
    std::sort(firstPicks.begin(), firstPicks.end());
    std::printf("  first pick after an edit: %.2f ms (slowest %.2f ms, %zu hits)  goal < 5 ms: %s\n", firstPick,
                firstPicks.back(), pickHits, verdict(firstPick, 5));
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
    int fromCache = 0;
    const ViewCamera start = view.camera();
    for (int i = 0; i < 30; ++i) {
        view.setView({start.center.x + float(i) * start.height * 0.01f, start.center.y}, start.height);
        pan.push_back(frameMilliseconds(view));
        fromCache += view.lastFrameFromCache() ? 1 : 0;
    }
    // Zoomed in to a tenth of the scene: most geometry is outside the view.
    std::vector<double> zoomed;
    size_t zoomedVertices = 0;
    for (int i = 0; i < 30; ++i) {
        view.setView({start.center.x + float(i) * 0.2f, start.center.y}, start.height / 10);
        zoomed.push_back(frameMilliseconds(view));
        zoomedVertices = std::max(zoomedVertices, view.lastDrawnVertices());
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
    std::printf("  level of detail: %d circle segments; chunks %zu\n", g.circleSegments, g.chunks.size());
    std::sort(pan.begin(), pan.end());
    std::printf("  pan frame      %7.2f ms (%5.1f fps)  goal < 33 ms: %s; %d of 30 frames from the cached picture, "
                "slowest %.1f ms\n",
                panMs, 1000 / panMs, panMs < 33 ? "met" : "MISSED", fromCache, pan.back());
    std::printf("  zoomed-in pan  %7.2f ms (%5.1f fps), %zu vertices drawn\n", median(zoomed), 1000 / median(zoomed),
                zoomedVertices);
    std::printf("  full rebuild   %7.2f ms (geometry build %.2f ms, then upload and frame)\n", median(rebuild),
                median(build));
    benchEdits(view, document);

    if (bodies <= 10000)
        benchPlayer(document, start);

    // Hit testing: a picker built whole (as after a scene change) answers
    // clicks from its grid.
    QElapsedTimer timer;
    timer.start();
    ScenePicker picker;
    picker.build(document.world());
    const double pickerBuild = double(timer.nsecsElapsed()) / 1e6;
    const SceneGeometry& box = view.geometry();
    std::vector<double> picks;
    size_t found = 0;
    for (int i = 0; i < 2000; ++i) {
        // Points spread over the scene, in a fixed pseudo-random order.
        const float fx = float((i * 7919) % 1000) / 1000.f, fy = float((i * 104729) % 1000) / 1000.f;
        const Vec2 p{box.lo.x + fx * (box.hi.x - box.lo.x), box.lo.y + fy * (box.hi.y - box.lo.y)};
        for (EditMode mode : {EditMode::Bodies, EditMode::Fixtures, EditMode::Vertices}) {
            timer.restart();
            found += picker.pick(mode, p, view.pickTolerance(), document.selection()).size();
            picks.push_back(double(timer.nsecsElapsed()) / 1e6);
        }
    }
    std::sort(picks.begin(), picks.end());
    const double p99 = picks[picks.size() * 99 / 100];
    timer.restart();
    const size_t boxed = picker.pickInBox(EditMode::Bodies, box.lo, {box.lo.x + (box.hi.x - box.lo.x) / 3,
                                                                     box.lo.y + (box.hi.y - box.lo.y) / 3},
                                          document.selection()).size();
    const double boxMs = double(timer.nsecsElapsed()) / 1e6;
    std::printf("  hit test: picker build %.1f ms; point query median %.4f ms, 99th percentile %.4f ms, worst %.3f ms "
                "(%zu hits in %zu queries) goal < 5 ms: %s; box of a ninth %.1f ms (%zu bodies)\n",
                pickerBuild, median(picks), p99, picks.back(), found, picks.size(), p99 < 5 ? "met" : "MISSED", boxMs,
                boxed);
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    Log::setThreshold(LOG_ERROR);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    // "--write DIR" only writes the large scenes there (for looking at them in the editor).
    const QStringList args = app.arguments();
    if (args.size() == 3 && args[1] == QLatin1String("--write")) {
        for (int bodies : {10000, 40000})
            saveSceneFile(*makeLargeScene(false, bodies), QDir(args[2]).filePath(QStringLiteral("large-%1.plax").arg(bodies)));
        return 0;
    }
    QTemporaryDir dir;
    // "--player" times only the player view's frames of the 10,000-body
    // scene, "--drag" only the vertex drag, "--scene N" only the editor
    // view of the N-body scene.
    if (args.size() == 2 && args[1] == QLatin1String("--player")) {
        EditorDocument document;
        const QString path = dir.filePath(QStringLiteral("large-10000.plax"));
        if (!saveSceneFile(*makeLargeScene(false, 10000), path) || !document.load(path))
            return 1;
        EditorView view(document, std::make_shared<TextureCache>());
        view.resize(1280, 800);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view))
            return 1;
        view.zoomToFit();
        benchPlayer(document, view.camera());
        return 0;
    }
    if (args.size() == 2 && args[1] == QLatin1String("--drag")) {
        benchVertexDrag();
        return 0;
    }
    if (args.size() == 3 && args[1] == QLatin1String("--scene")) {
        benchScene(args[2].toInt(), dir);
        return 0;
    }
    for (int bodies : {10000, 40000})
        benchScene(bodies, dir);
    benchVertexDrag();
    return 0;
}
