import QtQuick
import QtQuick.Shapes

// A disc filled with a gradient along its diagonal.
Shape {
    id: disc

    required property color startColor
    required property color endColor

    ShapePath {
        strokeColor: "transparent"
        fillGradient: LinearGradient {
            x1: 0
            y1: 0
            x2: disc.width
            y2: disc.height
            GradientStop { position: 0; color: disc.startColor }
            GradientStop { position: 1; color: disc.endColor }
        }

        PathAngleArc {
            centerX: disc.width / 2
            centerY: disc.height / 2
            radiusX: disc.width / 2
            radiusY: disc.height / 2
            startAngle: 0
            sweepAngle: 360
        }
    }
}
