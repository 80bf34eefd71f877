target_sources(plaxcore PRIVATE
  editing/custompropertycommands.cpp editing/custompropertycommands.h
  editing/edithost.h
  editing/editmode.cpp editing/editmode.h
  editing/editorstate.h
  editing/editswitches.cpp editing/editswitches.h
  editing/itemcommands.cpp editing/itemcommands.h
  editing/modifiedstate.cpp editing/modifiedstate.h
  editing/propertycommands.cpp editing/propertycommands.h
  editing/scriptcommand.cpp editing/scriptcommand.h
  editing/scripttext.cpp editing/scripttext.h
  editing/selection.cpp editing/selection.h
  editing/vertexcommands.cpp editing/vertexcommands.h
)
