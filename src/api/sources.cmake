target_sources(plaxcore PRIVATE
  api/register_aabb.cpp
  api/register_addons.cpp
  api/register_body.cpp
  api/register_color.cpp
  api/register_exportexclusions.cpp
  api/register_files.cpp
  api/register_fixture.cpp
  api/register_handles.cpp
  api/register_hookdata.cpp
  api/register_image.cpp
  api/register_joint.cpp
  api/register_json.cpp
  api/register_numbers.cpp
  api/register_object.cpp
  api/register_path.cpp
  api/register_print.cpp
  api/register_printhandles.cpp
  api/register_queries.cpp
  api/register_sampler.cpp
  api/register_search.cpp
  api/register_shape.cpp
  api/register_sort.cpp
  api/register_vec2.cpp
  api/register_vertex.cpp
  api/register_world.cpp
  api/scriptaabb.cpp api/scriptaabb.h
  api/scriptapi.cpp api/scriptapi.h
  api/scriptapidump.cpp api/scriptapidump.h
  api/scriptapisupport.cpp api/scriptapisupport.h
  api/scriptbody.cpp api/scriptbody.h
  api/scriptcolor.cpp api/scriptcolor.h
  api/scriptcustomprops.cpp api/scriptcustomprops.h
  api/scriptfixture.cpp api/scriptfixture.h
  api/scripthandles.h
  api/scripthookdata.cpp api/scripthookdata.h
  api/scriptimage.cpp api/scriptimage.h
  api/scriptitemhandles.cpp api/scriptitemhandles.h
  api/scriptitemops.cpp api/scriptitemops.h
  api/scriptjoint.cpp api/scriptjoint.h
  api/scriptkinds.h
  api/scriptmass.cpp api/scriptmass.h
  api/scriptobject.cpp api/scriptobject.h
  api/scriptpath.cpp api/scriptpath.h
  api/scriptplacedapi.h
  api/scriptqueries.h
  api/scriptregistrar.cpp api/scriptregistrar.h
  api/scriptregistration.h
  api/scriptsampler.cpp api/scriptsampler.h
  api/scriptsamplerpixels.cpp api/scriptsamplerpixels.h
  api/scripttransform.cpp api/scripttransform.h
  api/scriptvec2.cpp api/scriptvec2.h
  api/scriptworld.cpp api/scriptworld.h
  api/scriptexportexclusions.cpp api/scriptexportexclusions.h
  api/register_documentsettings.cpp
  api/scriptdocumentsettings.cpp api/scriptdocumentsettings.h
)
