#include "api/scriptsampler.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "api/scriptplacedapi.h"
#include "base/log.h"
#include "model/metaworld.h"

namespace SamplerApi
{
namespace
{
using P = PlacedApi<ScriptSampler, MetaSampler>;

template <class T, class F>
T read(ScriptSampler* self, F f)
{
    MetaSampler* sampler = P::use(self);
    return sampler ? f(*sampler) : T();
}

void setOutputSide(ScriptSampler* self, const char* method, int& (*field)(MetaSampler&), int value)
{
    MetaSampler* sampler = P::use(self);
    if (!sampler)
        return;
    if (value < 0 || value > kMaxOutputSide) {
        plaxLog(LOG_WARNING, "Ignoring invalid value for sampler::%s: %d", method, value);
        return;
    }
    ScriptApi::setInt(*sampler, method, field(*sampler), value);
}
} // namespace

void setFile(ScriptSampler* self, const std::string& file)
{
    if (MetaSampler* sampler = P::use(self))
        ScriptApi::setString(*sampler, "setFile", sampler->file, QString::fromStdString(file));
}

void setHeight(ScriptSampler* self, float height)
{
    MetaSampler* sampler = P::use(self);
    if (sampler && P::inRange(height, 0, 3.4e38f, "setHeight", true))
        ScriptApi::setFloat(*sampler, "setHeight", sampler->height, height);
}

void setOutputWidth(ScriptSampler* self, int width)
{
    setOutputSide(self, "setOutputWidth", [](MetaSampler& s) -> int& { return s.outputWidth; }, width);
}

void setOutputHeight(ScriptSampler* self, int height)
{
    setOutputSide(self, "setOutputHeight", [](MetaSampler& s) -> int& { return s.outputHeight; }, height);
}

void setAlphaEdgeThreshold(ScriptSampler* self, float threshold)
{
    MetaSampler* sampler = P::use(self);
    if (sampler && P::inRange(threshold, 0, 1, "setAlphaEdgeThreshold"))
        ScriptApi::setFloat(*sampler, "setAlphaEdgeThreshold", sampler->alphaEdgeThreshold, threshold);
}

void setAutoUpdate(ScriptSampler* self, int on)
{
    if (MetaSampler* sampler = P::use(self))
        ScriptApi::setBool(*sampler, "setAutoUpdate", sampler->autoUpdate, on != 0);
}
void setAutoUpdateB(ScriptSampler* self, bool on) { setAutoUpdate(self, on ? 1 : 0); }

void setUseColor(ScriptSampler* self, int on)
{
    if (MetaSampler* sampler = P::use(self))
        ScriptApi::setBool(*sampler, "setUseColor", sampler->useColor, on != 0);
}
void setUseColorB(ScriptSampler* self, bool on) { setUseColor(self, on ? 1 : 0); }

float getHeight(ScriptSampler* self) { return read<float>(self, [](MetaSampler& s) { return s.height; }); }
float getAlphaEdgeThreshold(ScriptSampler* self) { return read<float>(self, [](MetaSampler& s) { return s.alphaEdgeThreshold; }); }
int getOutputWidth(ScriptSampler* self) { return read<int>(self, [](MetaSampler& s) { return s.outputWidth; }); }
int getOutputHeight(ScriptSampler* self) { return read<int>(self, [](MetaSampler& s) { return s.outputHeight; }); }
bool getAutoUpdate(ScriptSampler* self) { return read<bool>(self, [](MetaSampler& s) { return s.autoUpdate; }); }
bool getUseColor(ScriptSampler* self) { return read<bool>(self, [](MetaSampler& s) { return s.useColor; }); }

ScriptSampler addSamplerAt(ScriptVec2 center)
{
    if (!ScriptApi::world() || !ScriptApi::isUsable(ScriptApi::toVec(center), "sampler", "addSampler"))
        return {};
    return ScriptApi::samplerHandle(ItemOps::addNewSampler(ScriptApi::toVec(center)));
}
} // namespace SamplerApi
