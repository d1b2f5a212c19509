// draw-icon DRAWING PICTURE SIZE: draws an SVG as a square PNG of so many dots. Run while the project is built.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char **argv)
{
    const int size = argc == 4 ? QByteArray(argv[3]).toInt() : 0;
    if (size <= 0) {
        std::fputs("Usage: draw-icon DRAWING PICTURE SIZE\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    if (drawing.isValid() && picture.save(QString::fromLocal8Bit(argv[2]), "PNG"))
        return 0;
    std::fprintf(stderr, "%s cannot be drawn as %s.\n", argv[1], argv[2]);
    return 1;
}
