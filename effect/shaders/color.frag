#version 330
// Flat colour, interpolated over each triangle.

in vec2 out_uvs;  // delivered by the vertex text, not read
in vec4 out_col;

out vec4 colourOut;

void main() {
    colourOut = out_col;
}
