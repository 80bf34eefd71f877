# Sources of panels/ are listed here as they are added.
