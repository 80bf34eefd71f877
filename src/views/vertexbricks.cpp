#include "views/vertexbricks.h"

#include <algorithm>
#include <cmath>

void VertexBricks::measure(const std::vector<GeomVertex>& vertices, size_t brick)
{
    Box box{INFINITY, INFINITY, -INFINITY, -INFINITY};
    const size_t end = std::min(vertices.size(), (brick + 1) * kSize);
    for (size_t i = brick * kSize; i < end; ++i) {
        const GeomVertex& v = vertices[i];
        box.loX = std::min(box.loX, v.x);
        box.loY = std::min(box.loY, v.y);
        box.hiX = std::max(box.hiX, v.x);
        box.hiY = std::max(box.hiY, v.y);
    }
    m_boxes[brick] = box;
}

void VertexBricks::rebuild(const std::vector<GeomVertex>& vertices)
{
    m_boxes.assign((vertices.size() + kSize - 1) / kSize, Box{});
    for (size_t brick = 0; brick < m_boxes.size(); ++brick)
        measure(vertices, brick);
}

void VertexBricks::refresh(const std::vector<GeomVertex>& vertices, size_t first, size_t count)
{
    const size_t before = m_boxes.size();
    m_boxes.resize((vertices.size() + kSize - 1) / kSize);
    // Bricks new to a grown array, and the last one, which may have grown.
    for (size_t brick = before == 0 ? 0 : before - 1; brick < m_boxes.size(); ++brick)
        measure(vertices, brick);
    if (count == 0)
        return;
    const size_t last = std::min(m_boxes.size(), (first + count + kSize - 1) / kSize);
    for (size_t brick = first / kSize; brick < last; ++brick)
        measure(vertices, brick);
}

std::vector<std::pair<int, int>> VertexBricks::runs(int first, int count, double loX, double loY, double hiX,
                                                    double hiY) const
{
    std::vector<std::pair<int, int>> out;
    if (count <= 0)
        return out;
    const size_t end = size_t(first) + size_t(count);
    for (size_t brick = size_t(first) / kSize; brick * kSize < end; ++brick) {
        // A run past the boxes known (not expected) is drawn whole.
        const bool reaches = brick >= m_boxes.size() ||
                             (m_boxes[brick].hiX >= loX && m_boxes[brick].loX <= hiX && m_boxes[brick].hiY >= loY &&
                              m_boxes[brick].loY <= hiY);
        if (!reaches)
            continue;
        const int from = int(std::max(size_t(first), brick * kSize));
        const int to = int(std::min(end, (brick + 1) * kSize));
        if (!out.empty() && out.back().first + out.back().second == from)
            out.back().second += to - from;
        else
            out.emplace_back(from, to - from);
    }
    return out;
}
