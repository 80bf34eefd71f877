target_sources(plaxgui PRIVATE
  app/batchtool.cpp app/batchtool.h
  app/lastchance.cpp app/lastchance.h
  app/mainwindow.cpp app/mainwindow.h
  app/startup.cpp app/startup.h
)
