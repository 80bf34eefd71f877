// Moves the selected bodies together so that their centre is at the cursor.
body[]@ bodies = sb();
vec2 centre = getSelectionCenter(0);
translate(bodies, cursor() - centre);
