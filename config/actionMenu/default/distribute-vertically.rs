// Spaces the selected bodies evenly between the lowest and the highest.
bool below(body a, body b) { return a.pos.y < b.pos.y; }

void main()
{
    body[]@ bodies = sortBodies(sb(), @below);
    uint n = bodies.length();
    float first = bodies[0].pos.y;
    float step = (bodies[n - 1].pos.y - first) / (n - 1);
    for (uint i = 1; i < n - 1; i++)
        bodies[i].setPosition(bodies[i].pos.x, first + i * step);
}
