target_sources(plaxcore PRIVATE
  engine/batchscript.cpp engine/batchscript.h
  engine/documentscripting.cpp engine/documentscripting.h
  engine/objectinstancehost.h
  engine/recordedcalls.cpp engine/recordedcalls.h
  engine/scriptbackground.cpp engine/scriptbackground.h
  engine/scriptcompiletask.cpp engine/scriptcompiletask.h
  engine/scriptdocument.h
  engine/scriptexecution.cpp engine/scriptexecution.h
  engine/scripthooks.h
  engine/scriptlimits.cpp engine/scriptlimits.h
  engine/scriptlog.cpp engine/scriptlog.h
  engine/scriptmemorybudget.cpp engine/scriptmemorybudget.h
  engine/scriptmessages.cpp engine/scriptmessages.h
  engine/scriptmodules.cpp engine/scriptmodules.h
  engine/scriptoutput.cpp engine/scriptoutput.h
  engine/scriptpreprocessor.cpp engine/scriptpreprocessor.h
  engine/scriptstate.cpp engine/scriptstate.h
  engine/scriptuihooks.cpp engine/scriptuihooks.h
  engine/scriptwatchdog.cpp engine/scriptwatchdog.h
)
