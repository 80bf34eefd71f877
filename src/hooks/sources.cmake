target_sources(plaxcore PRIVATE
  hooks/hookevents.cpp hooks/hookevents.h
  hooks/customactionmenu.cpp hooks/customactionmenu.h
  hooks/exporthooks.cpp hooks/exporthooks.h
  hooks/scripthooksmanager.cpp hooks/scripthooksmanager.h
  hooks/scripthookstable.cpp hooks/scripthookstable.h
  hooks/systemcommand.cpp hooks/systemcommand.h
  hooks/systemhookprocess.cpp hooks/systemhookprocess.h
)
