void main() { print("no includes"); }
