target_sources(plaxcore PRIVATE
  base/flags.cpp base/flags.h
  base/log.cpp base/log.h
  base/notify.cpp base/notify.h
  base/processexit.cpp base/processexit.h
  base/settings.cpp base/settings.h
  base/types.h
  base/version.cpp base/version.h
)
