target_sources(plaxcore PRIVATE
  script/batchscript.cpp script/batchscript.h
  script/clipboardedits.cpp script/clipboardedits.h
  script/creationedits.cpp script/creationedits.h
  script/documentscripting.cpp script/documentscripting.h
  script/hookevents.cpp script/hookevents.h
  script/itemsnapshot.cpp script/itemsnapshot.h
  script/objectinstancehost.h
  script/register_aabb.cpp
  script/register_addons.cpp
  script/register_body.cpp
  script/register_color.cpp
  script/register_exportexclusions.cpp
  script/register_files.cpp
  script/register_fixture.cpp
  script/register_handles.cpp
  script/register_hookdata.cpp
  script/register_image.cpp
  script/register_joint.cpp
  script/register_json.cpp
  script/register_numbers.cpp
  script/register_object.cpp
  script/register_path.cpp
  script/register_print.cpp
  script/register_printhandles.cpp
  script/register_queries.cpp
  script/register_sampler.cpp
  script/register_search.cpp
  script/register_shape.cpp
  script/register_sort.cpp
  script/register_vec2.cpp
  script/register_vertex.cpp
  script/register_world.cpp
  script/samplerpaths.cpp script/samplerpaths.h
  script/scriptaabb.cpp script/scriptaabb.h
  script/scriptapi.cpp script/scriptapi.h
  script/scriptapidump.cpp script/scriptapidump.h
  script/scriptapisupport.cpp script/scriptapisupport.h
  script/scriptbackground.cpp script/scriptbackground.h
  script/scriptbody.cpp script/scriptbody.h
  script/scriptcolor.cpp script/scriptcolor.h
  script/scriptcompiletask.cpp script/scriptcompiletask.h
  script/scriptcustomprops.cpp script/scriptcustomprops.h
  script/scriptdocument.h
  script/scriptexecution.cpp script/scriptexecution.h
  script/scriptfixture.cpp script/scriptfixture.h
  script/scripthandles.h
  script/scripthookdata.cpp script/scripthookdata.h
  script/scripthooks.h
  script/scriptimage.cpp script/scriptimage.h
  script/scriptitemhandles.cpp script/scriptitemhandles.h
  script/scriptitemops.cpp script/scriptitemops.h
  script/scriptjoint.cpp script/scriptjoint.h
  script/scriptkinds.h
  script/scriptlimits.cpp script/scriptlimits.h
  script/scriptlog.cpp script/scriptlog.h
  script/scriptmass.cpp script/scriptmass.h
  script/scriptmemorybudget.cpp script/scriptmemorybudget.h
  script/scriptmessages.cpp script/scriptmessages.h
  script/scriptmodules.cpp script/scriptmodules.h
  script/scriptobject.cpp script/scriptobject.h
  script/scriptoutput.cpp script/scriptoutput.h
  script/scriptpath.cpp script/scriptpath.h
  script/scriptplacedapi.h
  script/scriptpreprocessor.cpp script/scriptpreprocessor.h
  script/scriptqueries.h
  script/scriptregistrar.cpp script/scriptregistrar.h
  script/scriptregistration.h
  script/scriptsampler.cpp script/scriptsampler.h
  script/scriptsamplerpixels.cpp script/scriptsamplerpixels.h
  script/scriptstate.cpp script/scriptstate.h
  script/scripttransform.cpp script/scripttransform.h
  script/scriptuihooks.cpp script/scriptuihooks.h
  script/scriptvec2.cpp script/scriptvec2.h
  script/scriptwatchdog.cpp script/scriptwatchdog.h
  script/scriptworld.cpp script/scriptworld.h
  script/customactionmenu.cpp script/customactionmenu.h
  script/scriptexportexclusions.cpp script/scriptexportexclusions.h
  script/selectionchange.cpp script/selectionchange.h
  script/selectionedits.cpp script/selectionedits.h
  script/transformsession.cpp script/transformsession.h
)
