target_sources(plaxcore PRIVATE
  edits/clipboardedits.cpp edits/clipboardedits.h
  edits/creationedits.cpp edits/creationedits.h
  edits/itemsnapshot.cpp edits/itemsnapshot.h
  edits/samplerpaths.cpp edits/samplerpaths.h
  edits/selectionchange.cpp edits/selectionchange.h
  edits/selectionedits.cpp edits/selectionedits.h
  edits/transformsession.cpp edits/transformsession.h
)
