target_sources(plaxcore PRIVATE
  player/displaytoggles.cpp player/displaytoggles.h
  player/keepresult.cpp player/keepresult.h
  player/mousedrag.cpp player/mousedrag.h
  player/playerclock.h
  player/playerinfo.cpp player/playerinfo.h
  player/playerrawinfo.cpp player/playerrawinfo.h
  player/playersimulation.cpp player/playersimulation.h
  player/playerworld.cpp player/playerworld.h
  player/stepscheduler.cpp player/stepscheduler.h
)
