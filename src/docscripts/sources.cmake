target_sources(plaxcore PRIVATE
  docscripts/customlabelscript.cpp docscripts/customlabelscript.h
  docscripts/displayfilterscript.cpp docscripts/displayfilterscript.h
  docscripts/documentscriptcall.cpp docscripts/documentscriptcall.h
  docscripts/documentscriptmodule.cpp docscripts/documentscriptmodule.h
  docscripts/documentscripts.cpp docscripts/documentscripts.h
  docscripts/documentscriptshost.cpp docscripts/documentscriptshost.h
  docscripts/exportfilterscript.cpp docscripts/exportfilterscript.h
  docscripts/scripttemplates.cpp docscripts/scripttemplates.h
  docscripts/scripttrust.cpp docscripts/scripttrust.h
)
