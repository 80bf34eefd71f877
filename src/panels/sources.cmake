target_sources(plaxgui PRIVATE
  panels/aboutdialog.cpp panels/aboutdialog.h
  panels/bodyproperties.cpp
  panels/collisionfiltertable.cpp panels/collisionfiltertable.h
  panels/customactionmenus.cpp panels/customactionmenus.h
  panels/custompropertytable.cpp panels/custompropertytable.h
  panels/customrows.cpp
  panels/exportedpropertytable.cpp panels/exportedpropertytable.h
  panels/helpbrowser.cpp panels/helpbrowser.h
  panels/itemstree.cpp panels/itemstree.h
  panels/jointproperties.cpp
  panels/messagelogpanel.cpp panels/messagelogpanel.h
  panels/placedproperties.cpp
  panels/preferencesdialog.cpp panels/preferencesdialog.h
  panels/propertiespanel.cpp panels/propertiespanel.h
  panels/propertydefs.h
  panels/propertyrows.h
  panels/scenescriptsdialog.cpp panels/scenescriptsdialog.h
  panels/scriptapicatalog.cpp panels/scriptapicatalog.h
  panels/scripthooksdialog.cpp panels/scripthooksdialog.h
  panels/scripthooksmodel.cpp panels/scripthooksmodel.h
  panels/scripteditor.cpp panels/scripteditor.h
  panels/scripteditorpanel.cpp panels/scripteditorpanel.h
  panels/scriptlibrary.cpp panels/scriptlibrary.h
  panels/scriptquerydialogs.cpp panels/scriptquerydialogs.h
  panels/tipsdialog.cpp panels/tipsdialog.h
  panels/updatecheck.cpp panels/updatecheck.h
)

# The help browser shows the hand-written part of the scripting reference.
qt_add_resources(plaxgui plaxhelp
  PREFIX /help
  BASE ${PROJECT_SOURCE_DIR}/docs
  FILES ${PROJECT_SOURCE_DIR}/docs/scripting.head.md)
