// Rows of images and samplers (both lie over an image file) and of object
// instances.
#include "panels/propertyrows.h"

#include "api/scriptapisupport.h"
#include "api/scriptimage.h"
#include "api/scriptobject.h"
#include "api/scriptpath.h"
#include "api/scriptplacedapi.h"
#include "api/scriptsampler.h"
#include "model/metaworld.h"

namespace
{
using namespace PropertyRows;
using Type = PropertyDef::Type;

template <class Item>
auto handleOf(const Item& item)
{
    if constexpr (std::is_same_v<Item, MetaImage>)
        return ScriptApi::imageHandle(&item);
    else if constexpr (std::is_same_v<Item, MetaSampler>)
        return ScriptApi::samplerHandle(&item);
    else
        return ScriptApi::objectHandle(&item);
}

template <class Item>
using Placed = PlacedApi<decltype(handleOf(std::declval<const Item&>())), Item>;

template <class Item>
PropertyDef nameRow()
{
    return row<Item>("Name", Type::Text, [](const Item& i) { return QVariant(i.name()); },
                     [](const Item& i, const QVariant& v) { ScriptApi::setName(const_cast<Item&>(i), v.toString()); });
}

// Rows images and samplers share: file, body, centre, angle, opacity, flip, tint.
template <class Item>
void placedRows(std::vector<PropertyDef>& rows, void (*setFile)(decltype(handleOf(std::declval<const Item&>()))*,
                                                                 const std::string&))
{
    using P = Placed<Item>;
    rows.push_back(nameRow<Item>());
    rows.push_back(row<Item>("File", Type::Text, [](const Item& i) { return QVariant(i.file); },
                             [setFile](const Item& i, const QVariant& v) {
                                 auto h = handleOf(i);
                                 setFile(&h, v.toString().toStdString());
                             }));
    rows.push_back(row<Item>("Body", Type::Text, [](const Item& i) { return QVariant(i.body ? i.body->name() : QString()); }));
    rows.push_back(row<Item>("Center x", Type::Float, [](const Item& i) { return QVariant(double(i.center.x)); },
                             [](const Item& i, const QVariant& v) {
                                 auto h = handleOf(i);
                                 P::setCenter(&h, v.toFloat(), i.center.y);
                             }));
    rows.push_back(row<Item>("Center y", Type::Float, [](const Item& i) { return QVariant(double(i.center.y)); },
                             [](const Item& i, const QVariant& v) {
                                 auto h = handleOf(i);
                                 P::setCenter(&h, i.center.x, v.toFloat());
                             }));
    rows.push_back(row<Item>("Angle (rad)", Type::Float, [](const Item& i) { return QVariant(double(i.angle)); },
                             [](const Item& i, const QVariant& v) {
                                 auto h = handleOf(i);
                                 P::setAngle(&h, v.toFloat());
                             }));
    rows.push_back(row<Item>("Opacity", Type::Float, [](const Item& i) { return QVariant(double(i.opacity)); },
                             [](const Item& i, const QVariant& v) {
                                 auto h = handleOf(i);
                                 P::setOpacity(&h, v.toFloat());
                             }));
    rows.push_back(row<Item>("Flip", Type::Bool, [](const Item& i) { return QVariant(i.flip); },
                             [](const Item& i, const QVariant& v) {
                                 auto h = handleOf(i);
                                 P::setFlip(&h, v.toBool() ? 1 : 0);
                             }));
    rows.push_back(row<Item>("Colour tint", Type::Text, [](const Item& i) { return QVariant(colorText(i.colorTint)); },
                             [](const Item& i, const QVariant& v) {
                                 int c[4];
                                 if (!parseColor(v.toString(), c))
                                     return;
                                 auto h = handleOf(i);
                                 P::setColorTint(&h, c[0], c[1], c[2], c[3]);
                             }));
}
} // namespace

std::vector<PropertyDef> imageProperties()
{
    std::vector<PropertyDef> rows;
    placedRows<MetaImage>(rows, &ImageApi::setFile);
    rows.push_back(row<MetaImage>("Height", Type::Float, [](const MetaImage& i) { return QVariant(double(i.scale)); },
                                  [](const MetaImage& i, const QVariant& v) {
                                      ScriptImage h = handleOf(i);
                                      ImageApi::setHeight(&h, v.toFloat());
                                  }));
    rows.push_back(row<MetaImage>("Aspect scale", Type::Float,
                                  [](const MetaImage& i) { return QVariant(double(i.aspectScale)); },
                                  [](const MetaImage& i, const QVariant& v) {
                                      ScriptImage h = handleOf(i);
                                      ImageApi::setAspectScale(&h, v.toFloat());
                                  }));
    rows.push_back(row<MetaImage>("Render order", Type::Float,
                                  [](const MetaImage& i) { return QVariant(double(i.renderOrder)); },
                                  [](const MetaImage& i, const QVariant& v) {
                                      ScriptImage h = handleOf(i);
                                      ImageApi::setRenderOrder(&h, v.toFloat());
                                  }));
    rows.push_back(row<MetaImage>("Filter", Type::Choice, [](const MetaImage& i) { return QVariant(i.filter); },
                                  [](const MetaImage& i, const QVariant& v) {
                                      ScriptImage h = handleOf(i);
                                      ImageApi::setFilter(&h, v.toInt());
                                  },
                                  {tr("Nearest"), tr("Linear")}));
    return rows;
}

std::vector<PropertyDef> samplerProperties()
{
    std::vector<PropertyDef> rows;
    placedRows<MetaSampler>(rows, &SamplerApi::setFile);
    rows.push_back(row<MetaSampler>("Height", Type::Float, [](const MetaSampler& s) { return QVariant(double(s.height)); },
                                    [](const MetaSampler& s, const QVariant& v) {
                                        ScriptSampler h = handleOf(s);
                                        SamplerApi::setHeight(&h, v.toFloat());
                                    }));
    rows.push_back(row<MetaSampler>("Output width", Type::Int, [](const MetaSampler& s) { return QVariant(s.outputWidth); },
                                    [](const MetaSampler& s, const QVariant& v) {
                                        ScriptSampler h = handleOf(s);
                                        SamplerApi::setOutputWidth(&h, v.toInt());
                                    }));
    rows.push_back(row<MetaSampler>("Output height", Type::Int,
                                    [](const MetaSampler& s) { return QVariant(s.outputHeight); },
                                    [](const MetaSampler& s, const QVariant& v) {
                                        ScriptSampler h = handleOf(s);
                                        SamplerApi::setOutputHeight(&h, v.toInt());
                                    }));
    rows.push_back(row<MetaSampler>("Alpha edge threshold", Type::Float,
                                    [](const MetaSampler& s) { return QVariant(double(s.alphaEdgeThreshold)); },
                                    [](const MetaSampler& s, const QVariant& v) {
                                        ScriptSampler h = handleOf(s);
                                        SamplerApi::setAlphaEdgeThreshold(&h, v.toFloat());
                                    }));
    rows.push_back(row<MetaSampler>("Auto update", Type::Bool, [](const MetaSampler& s) { return QVariant(s.autoUpdate); },
                                    [](const MetaSampler& s, const QVariant& v) {
                                        ScriptSampler h = handleOf(s);
                                        SamplerApi::setAutoUpdateB(&h, v.toBool());
                                    }));
    rows.push_back(row<MetaSampler>("Use colour", Type::Bool, [](const MetaSampler& s) { return QVariant(s.useColor); },
                                    [](const MetaSampler& s, const QVariant& v) {
                                        ScriptSampler h = handleOf(s);
                                        SamplerApi::setUseColorB(&h, v.toBool());
                                    }));

    // The paths of a sampler share these rows (shown when it has paths): the
    // first path shows its value, an edit sets it on every path.
    const auto pathRow = [&rows](const char* label, Type type, auto get, auto set, QStringList choices = {}) {
        rows.push_back(only<MetaSampler>(row<MetaSampler>(
            label, type,
            [get](const MetaSampler& s) { return s.paths.empty() ? QVariant() : QVariant(get(s.paths.front())); },
            [set](const MetaSampler& s, const QVariant& v) {
                for (size_t i = 0; i < s.paths.size(); ++i) {
                    ScriptPath h = PathApi::pathHandle(&s, int(i));
                    set(&h, v);
                }
            },
            choices), [](const MetaSampler& s) { return !s.paths.empty(); }));
    };
    pathRow("Path type", Type::Choice, [](const MetaPath& p) { return int(p.type); },
            [](ScriptPath* h, const QVariant& v) { PathApi::setType(h, v.toInt()); },
            {tr("Circle"), tr("Polygon"), tr("Line"), tr("Loop")});
    pathRow("Path radius", Type::Float, [](const MetaPath& p) { return double(p.radius); },
            [](ScriptPath* h, const QVariant& v) { PathApi::setRadius(h, v.toFloat()); });
    pathRow("Path max points", Type::Int, [](const MetaPath& p) { return p.maxPoints; },
            [](ScriptPath* h, const QVariant& v) { PathApi::setMaxPoints(h, v.toInt()); });
    pathRow("Path min angle (deg)", Type::Int, [](const MetaPath& p) { return p.minAngle; },
            [](ScriptPath* h, const QVariant& v) { PathApi::setMinAngle(h, v.toInt()); });
    return rows;
}

std::vector<PropertyDef> objectProperties()
{
    std::vector<PropertyDef> rows;
    rows.push_back(nameRow<MetaObject>());
    rows.push_back(row<MetaObject>("File", Type::Text, [](const MetaObject& o) { return QVariant(o.file); },
                                   [](const MetaObject& o, const QVariant& v) {
                                       ScriptObject h = handleOf(o);
                                       ObjectApi::setFile(&h, v.toString().toStdString());
                                   }));
    rows.push_back(row<MetaObject>("Position x", Type::Float, [](const MetaObject& o) { return QVariant(double(o.position.x)); },
                                   [](const MetaObject& o, const QVariant& v) {
                                       ScriptObject h = handleOf(o);
                                       ObjectApi::setPosition(&h, v.toFloat(), o.position.y);
                                   }));
    rows.push_back(row<MetaObject>("Position y", Type::Float, [](const MetaObject& o) { return QVariant(double(o.position.y)); },
                                   [](const MetaObject& o, const QVariant& v) {
                                       ScriptObject h = handleOf(o);
                                       ObjectApi::setPosition(&h, o.position.x, v.toFloat());
                                   }));
    rows.push_back(row<MetaObject>("Angle (rad)", Type::Float, [](const MetaObject& o) { return QVariant(double(o.angle)); },
                                   [](const MetaObject& o, const QVariant& v) {
                                       ScriptObject h = handleOf(o);
                                       ObjectApi::setAngle(&h, v.toFloat());
                                   }));
    rows.push_back(row<MetaObject>("Scale", Type::Float, [](const MetaObject& o) { return QVariant(double(o.scale)); },
                                   [](const MetaObject& o, const QVariant& v) {
                                       ScriptObject h = handleOf(o);
                                       ObjectApi::setScale(&h, v.toFloat());
                                   }));
    rows.push_back(row<MetaObject>("Flip", Type::Bool, [](const MetaObject& o) { return QVariant(o.flip); },
                                   [](const MetaObject& o, const QVariant& v) {
                                       ScriptObject h = handleOf(o);
                                       ObjectApi::setFlip(&h, v.toBool() ? 1 : 0);
                                   }));
    return rows;
}
