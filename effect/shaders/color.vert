#version 330
// Places coloured triangles; the texture coordinates follow from the place on the target.

uniform mat4 ModelviewProjection;  // output pixels to clip space

in vec4 Position;  // output pixels, y down the image
in vec4 Color;

out vec4 out_pos;  // clip space
out vec4 out_col;
out vec2 out_uvs;  // 0 to 1 over the target

void main() {
    out_pos = ModelviewProjection * Position;
    gl_Position = out_pos;
    out_uvs = out_pos.xy / 2.0 + 0.5;
    out_col = Color;
}
