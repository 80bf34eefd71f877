#include "api/scriptimage.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "api/scriptplacedapi.h"
#include "base/log.h"
#include "model/metaworld.h"
#include "sampling/imagesource.h"

namespace ImageApi
{
namespace
{
using P = PlacedApi<ScriptImage, MetaImage>;

// Reads the pixel size of the image's file (0 x 0 when it cannot be read).
void refreshPixelSize(MetaImage& image)
{
    image.pixelWidth = 0;
    image.pixelHeight = 0;
    ScriptDocument* doc = ScriptApi::document();
    const QString path = resolveSceneFile(image.file, doc ? doc->filePath() : QString());
    if (path.isEmpty())
        return;
    QString error;
    const QSize size = readImageSize(path, &error);
    if (!size.isValid()) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not read image file '%1': %2").arg(path, error));
        return;
    }
    image.pixelWidth = size.width();
    image.pixelHeight = size.height();
}

void setSize(ScriptImage* self, const char* method, float value)
{
    MetaImage* image = P::use(self);
    if (image && P::inRange(value, 0, 3.4e38f, method, true))
        ScriptApi::setFloat(*image, method, image->scale, value);
}

template <class T, class F>
T read(ScriptImage* self, F f)
{
    MetaImage* image = P::use(self);
    return image ? f(*image) : T();
}
} // namespace

void setFile(ScriptImage* self, const std::string& file)
{
    MetaImage* image = P::use(self);
    if (!image)
        return;
    const QString name = QString::fromStdString(file);
    if (name == image->file)
        return;
    ScriptApi::setString(*image, "setFile", image->file, name);
    refreshPixelSize(*image);
}

void setScale(ScriptImage* self, float scale) { setSize(self, "setScale", scale); }
void setHeight(ScriptImage* self, float height) { setSize(self, "setHeight", height); }

void setAspectScale(ScriptImage* self, float value)
{
    MetaImage* image = P::use(self);
    if (image && P::inRange(value, 0, 3.4e38f, "setAspectScale", true))
        ScriptApi::setFloat(*image, "setAspectScale", image->aspectScale, value);
}

void setFilter(ScriptImage* self, int filter)
{
    MetaImage* image = P::use(self);
    if (!image)
        return;
    if (filter < 0) {
        plaxLog(LOG_WARNING, "Ignoring invalid value for image::setFilter: %d", filter);
        return;
    }
    ScriptApi::setInt(*image, "setFilter", image->filter, filter);
}

void setRenderOrder(ScriptImage* self, float order)
{
    if (MetaImage* image = P::use(self))
        ScriptApi::setFloat(*image, "setRenderOrder", image->renderOrder, order);
}

float getScale(ScriptImage* self) { return read<float>(self, [](MetaImage& i) { return i.scale; }); }
float getHeight(ScriptImage* self) { return getScale(self); }
float getAspectScale(ScriptImage* self) { return read<float>(self, [](MetaImage& i) { return i.aspectScale; }); }
int getFilter(ScriptImage* self) { return read<int>(self, [](MetaImage& i) { return i.filter; }); }
float getRenderOrder(ScriptImage* self) { return read<float>(self, [](MetaImage& i) { return i.renderOrder; }); }

int getPixelWidth(ScriptImage* self)
{
    return read<int>(self, [](MetaImage& i) {
        if (i.pixelWidth <= 0 && !i.file.isEmpty())
            refreshPixelSize(i);
        return i.pixelWidth;
    });
}

int getPixelHeight(ScriptImage* self)
{
    return read<int>(self, [](MetaImage& i) {
        if (i.pixelHeight <= 0 && !i.file.isEmpty())
            refreshPixelSize(i);
        return i.pixelHeight;
    });
}

ScriptImage addImageAt(const std::string& file, ScriptVec2 center)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !ScriptApi::isUsable(ScriptApi::toVec(center), "image", "addImage"))
        return {};
    MetaImage* image = ItemOps::addNewImage(QString::fromStdString(file), ScriptApi::toVec(center));
    if (image && image->pixelWidth <= 0)
        refreshPixelSize(*image);
    return ScriptApi::imageHandle(image);
}
} // namespace ImageApi
