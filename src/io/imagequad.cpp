#include "io/imagequad.h"

#include "model/metaimage.h"

#include <cmath>

ImageQuad computeImageQuad(const MetaImage& image)
{
    const float ratio =
        image.pixelWidth > 0 && image.pixelHeight > 0 ? float(image.pixelWidth) / float(image.pixelHeight) : 1.0f;
    const float halfH = 0.5f * image.scale;
    const float halfW = halfH * image.aspectScale * ratio;
    const float c = std::cos(image.angle);
    const float s = std::sin(image.angle);
    const std::array<Vec2, 4> local = {Vec2{-halfW, -halfH}, Vec2{halfW, -halfH}, Vec2{halfW, halfH}, Vec2{-halfW, halfH}};

    ImageQuad quad;
    for (size_t i = 0; i < 4; ++i) {
        const Vec2 p = local[i];
        quad.corners[i] = {image.center.x + c * p.x - s * p.y, image.center.y + s * p.x + c * p.y};
        quad.vertexPointer[2 * i] = quad.corners[i].x;
        quad.vertexPointer[2 * i + 1] = quad.corners[i].y;
    }
    const float u0 = image.flip ? 1.0f : 0.0f;
    const float u1 = image.flip ? 0.0f : 1.0f;
    quad.texCoordPointer = {u0, 1, u1, 1, u1, 0, u0, 0};
    quad.drawElements = {0, 1, 2, 2, 3, 0};
    return quad;
}
