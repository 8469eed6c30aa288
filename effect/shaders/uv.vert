#version 330
// Places a quad given in output pixels and hands its texture coordinates on.

uniform mat4 ModelviewProjection;  // output pixels to clip space

in vec4 Position;  // output pixels, y down the image
in vec2 UVs;

out vec4 out_pos;  // clip space
out vec2 out_uvs;

void main() {
    out_pos = ModelviewProjection * Position;
    gl_Position = out_pos;
    out_uvs = UVs;
}
