target_sources(plaxgui PRIVATE
  app/actionicons.cpp app/actionicons.h
  app/autosave.cpp app/autosave.h
  app/batchtool.cpp app/batchtool.h
  app/docklayout.cpp app/docklayout.h
  app/editactions.cpp app/editactions.h
  app/editorstartup.cpp app/editorstartup.h
  app/editorworkspace.cpp app/editorworkspace.h
  app/exportactions.cpp app/exportactions.h
  app/lastchance.cpp app/lastchance.h
  app/launchmode.cpp app/launchmode.h
  app/mainwindow.cpp app/mainwindow.h
  app/playeractions.cpp app/playeractions.h
  app/recentfiles.cpp app/recentfiles.h
  app/scripttooling.cpp app/scripttooling.h
  app/startup.cpp app/startup.h
  app/workingfolder.cpp app/workingfolder.h
)
