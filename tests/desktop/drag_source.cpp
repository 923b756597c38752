// A window from which a file can be dragged: what file managers do, for the test of dropping one. Its argument is the
// file.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class DragSource : public QWidget {
public:
    explicit DragSource(QString path_) : path(std::move(path_)) {}

protected:
    void mousePressEvent(QMouseEvent*) override {
        auto* data = new QMimeData;
        data->setUrls({QUrl::fromLocalFile(path)});
        auto* drag = new QDrag(this);
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }

private:
    QString path;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    DragSource source(QApplication::arguments().value(1));
    source.setWindowTitle(QStringLiteral("Drag source"));
    source.setFixedSize(100, 100);
    source.move(1200, 800);
    source.show();
    return QApplication::exec();
}
