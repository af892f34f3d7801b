// The least that a program in the tray can be: what ours is held against. With "--bare" it has not even an icon there.

#include <cstring>

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QSystemTrayIcon icon;
    if (argc < 2 || std::strcmp(argv[1], "--bare") != 0) {
        QPixmap square(22, 22);
        square.fill(Qt::green);
        icon.setIcon(QIcon(square));
        icon.show();
    }
    return QApplication::exec();
}
