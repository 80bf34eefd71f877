#pragma once

// Shared pieces of the rendering benchmark (plax-render-bench).

#include <QOpenGLWidget>

#include <vector>

class EditorDocument;
struct ViewCamera;

/// Goal of every frame time: 30 frames a second.
constexpr double kFrameGoalMs = 33;

/// One frame drawn now into the widget's frame buffer and read back, with
/// its wall time and the processor time it took: of the whole process (the
/// software rasteriser's threads included) and of the calling thread.
struct FrameTime
{
    double wallMs = 0;
    double processMs = 0;
    double threadMs = 0;
};

/// Draws and reads back one frame.
FrameTime timeFrame(QOpenGLWidget& view);
/// Median of each figure.
FrameTime medianFrame(std::vector<FrameTime> frames);
/// Median of some values (the upper one of an even count).
double medianOf(std::vector<double> values);
/// "met" or "MISSED".
const char* verdict(double value, double goal);
/// Prints a frame time with its goal: "<label> <wall> ms (... cpu) goal < 33 ms: met".
void printFrame(const char* label, const FrameTime& time);

/// The player's frames of a document's scene, with every dynamic body moved
/// a little before each frame, as a running world would be.
void benchPlayer(EditorDocument& document, const ViewCamera& start);
/// Dragging one vertex of a polygon of 100,000 corners in the editor.
void benchVertexDrag();
