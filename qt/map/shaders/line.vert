#version 440

layout(location = 0) in vec2 position;  // points at the zoom of the level
layout(location = 1) in vec2 outwards;  // to the edge of a line of half width 1
layout(location = 2) in float side;     // -1 at the left edge, 1 at the right one

layout(location = 3) in float point;    // which of the line's points; below 0: -1 less how far into a gap

layout(location = 0) out float offset;  // points from the middle of the line
layout(location = 1) out float passed;  // as the point

layout(std140, binding = 0) uniform Line {
    mat4 matrix;
    vec4 color;      // premultiplied
    vec4 faint;      // premultiplied
    vec4 casing;     // premultiplied
    float halfWidth; // points
    float casingWidth; // points, on each side
    float pixel;     // points
    float scale;     // points for one point at the zoom of the level
    float strongUntil; // points of the line
};

void main() {
    float reach = halfWidth + casingWidth + 0.5 * pixel;  // where the line covers nothing any more
    offset = side * reach;
    passed = point;
    gl_Position = matrix * vec4(position + outwards * (reach / scale), 0.0, 1.0);
}
