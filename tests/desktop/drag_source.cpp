// SPDX-License-Identifier: MIT
// A window from which a file can be dragged: what file managers do, for the test of dropping one. Its argument is the
// file's address, where any byte of a name can be written.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class DragSource : public QWidget {
public:
    explicit DragSource(QUrl address_) : address(std::move(address_)) {}

protected:
    void mousePressEvent(QMouseEvent*) override {
        auto* data = new QMimeData;
        data->setUrls({address});
        auto* drag = new QDrag(this);
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }

private:
    QUrl address;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    DragSource source(QUrl::fromEncoded(argv[argc - 1]));
    source.setWindowTitle(QStringLiteral("Drag source"));
    source.setFixedSize(100, 100);
    source.move(1200, 800);
    source.show();
    return QApplication::exec();
}
