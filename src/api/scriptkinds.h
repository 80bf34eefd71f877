#pragma once

#include "api/scriptapisupport.h"
#include "model/metaworld.h"

#include <vector>

// What the generic script functions (search, sorting, duplication) need to
// know of each handle type: its item class, its names in declarations and
// how to list its items and make handles.
template <class Handle>
struct HandleKind;

template <>
struct HandleKind<ScriptBody>
{
    using Item = MetaBody;
    static constexpr const char* type = "body";
    static constexpr const char* plural = "Bodies";
    static ScriptBody handle(const MetaBody* item) { return ScriptApi::bodyHandle(item); }
    static std::vector<MetaBody*> items(MetaWorld& w)
    {
        std::vector<MetaBody*> list;
        for (const auto& b : w.bodies())
            list.push_back(b.get());
        return list;
    }
};

template <>
struct HandleKind<ScriptFixture>
{
    using Item = MetaFixture;
    static constexpr const char* type = "fixture";
    static constexpr const char* plural = "Fixtures";
    static ScriptFixture handle(const MetaFixture* item) { return ScriptApi::fixtureHandle(item); }
    static std::vector<MetaFixture*> items(MetaWorld& w)
    {
        std::vector<MetaFixture*> list;
        for (const auto& b : w.bodies())
            for (const auto& f : b->fixtures())
                list.push_back(f.get());
        return list;
    }
};

template <>
struct HandleKind<ScriptJoint>
{
    using Item = MetaJoint;
    static constexpr const char* type = "joint";
    static constexpr const char* plural = "Joints";
    static ScriptJoint handle(const MetaJoint* item) { return ScriptApi::jointHandle(item); }
    static std::vector<MetaJoint*> items(MetaWorld& w)
    {
        std::vector<MetaJoint*> list;
        for (const auto& i : w.joints())
            list.push_back(i.get());
        return list;
    }
};

template <>
struct HandleKind<ScriptImage>
{
    using Item = MetaImage;
    static constexpr const char* type = "image";
    static constexpr const char* plural = "Images";
    static ScriptImage handle(const MetaImage* item) { return ScriptApi::imageHandle(item); }
    static std::vector<MetaImage*> items(MetaWorld& w)
    {
        std::vector<MetaImage*> list;
        for (const auto& i : w.images())
            list.push_back(i.get());
        return list;
    }
};

template <>
struct HandleKind<ScriptSampler>
{
    using Item = MetaSampler;
    static constexpr const char* type = "sampler";
    static constexpr const char* plural = "Samplers";
    static ScriptSampler handle(const MetaSampler* item) { return ScriptApi::samplerHandle(item); }
    static std::vector<MetaSampler*> items(MetaWorld& w)
    {
        std::vector<MetaSampler*> list;
        for (const auto& i : w.samplers())
            list.push_back(i.get());
        return list;
    }
};

template <>
struct HandleKind<ScriptObject>
{
    using Item = MetaObject;
    static constexpr const char* type = "object";
    static constexpr const char* plural = "Objects";
    static ScriptObject handle(const MetaObject* item) { return ScriptApi::objectHandle(item); }
    static std::vector<MetaObject*> items(MetaWorld& w)
    {
        std::vector<MetaObject*> list;
        for (const auto& i : w.objects())
            list.push_back(i.get());
        return list;
    }
};
