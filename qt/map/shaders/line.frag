#version 440

layout(location = 0) in float offset;
layout(location = 1) in float passed;
layout(location = 0) out vec4 fragment;

layout(std140, binding = 0) uniform Line {
    mat4 matrix;
    vec4 color;
    vec4 faint;
    vec4 casing;
    float halfWidth;
    float casingWidth;
    float pixel;
    float scale;
    float strongUntil;
};

// How much of the pixel lies within that distance from the middle of the line.
float covered(float reach) {
    return clamp((reach - abs(offset)) / pixel + 0.5, 0.0, 1.0);
}

// The same for dashes, so many points along the line.
float dashed(float along) {
    const float dash = 7.0;
    float fromMiddle = abs(fract(along / (2.0 * dash)) - 0.5) * 2.0 * dash;
    return clamp((dash / 2.0 - fromMiddle) / pixel + 0.5, 0.0, 1.0);
}

void main() {
    bool gap = passed < 0.0;
    bool ahead = gap || passed > strongUntil;
    vec4 line = (ahead ? faint : color) * covered(halfWidth);
    vec4 drawn = line + casing * covered(halfWidth + casingWidth) * (1.0 - line.a) * (ahead ? 0.4 : 1.0);
    fragment = gap ? drawn * dashed((-1.0 - passed) * scale) : drawn;
}
