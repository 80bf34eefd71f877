// Spaces the selected bodies evenly between the leftmost and the rightmost.
bool leftOf(body a, body b) { return a.pos.x < b.pos.x; }

void main()
{
    body[]@ bodies = sortBodies(sb(), @leftOf);
    uint n = bodies.length();
    float first = bodies[0].pos.x;
    float step = (bodies[n - 1].pos.x - first) / (n - 1);
    for (uint i = 1; i < n - 1; i++)
        bodies[i].setPosition(first + i * step, bodies[i].pos.y);
}
