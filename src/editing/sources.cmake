# Sources of editing/ are listed here as they are added.
