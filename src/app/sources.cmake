target_sources(plaxgui PRIVATE
  app/startup.cpp app/startup.h
)
