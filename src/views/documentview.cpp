#include "views/documentview.h"

#include <QCloseEvent>

DocumentView::DocumentView(EditorDocument& document, QWidget* parent) : QOpenGLWidget(parent), m_document(document)
{
}

DocumentView::~DocumentView() = default;

void DocumentView::closeEvent(QCloseEvent* event)
{
    if (m_closed) {
        event->accept();
        return;
    }
    if (m_closeGuard && !m_closeGuard(this)) {
        event->ignore();
        return;
    }
    aboutToClose();
    m_closed = true;
    event->accept();
    emit documentViewClosing(this);
}
