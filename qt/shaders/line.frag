#version 440

layout(location = 0) in float offset;
layout(location = 0) out vec4 fragment;

layout(std140, binding = 0) uniform Line {
    mat4 matrix;
    vec4 color;
    float halfWidth;
    float pixel;
    float scale;
};

// How much of the pixel the line covers.
void main() {
    fragment = color * clamp((halfWidth - abs(offset)) / pixel + 0.5, 0.0, 1.0);
}
